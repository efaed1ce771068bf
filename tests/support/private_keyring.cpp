#include "support/private_keyring.h"

#include "support/child_process.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <csignal>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace velmo::testing {

PrivateKeyring::PrivateKeyring(const PrivateBus &bus) : m_bus(bus) {
    start();
}

PrivateKeyring::~PrivateKeyring() {
    end();
}

void PrivateKeyring::restart() {
    end();
    start();
}

void PrivateKeyring::lock() {
    QDBusMessage call =
        QDBusMessage::createMethodCall(u"org.freedesktop.secrets"_s, u"/org/freedesktop/secrets"_s,
                                       u"org.freedesktop.Secret.Service"_s, u"Lock"_s);
    call << QVariant::fromValue(QList{QDBusObjectPath(u"/org/freedesktop/secrets/collection/login"_s)});
    bool isLocked = false;
    {
        const QDBusConnection connection = QDBusConnection::connectToBus(m_bus.address(), u"locks"_s);
        isLocked = connection.call(call).type() == QDBusMessage::ReplyMessage;
    }
    QDBusConnection::disconnectFromBus(u"locks"_s);
    if (!isLocked)
        throw std::runtime_error("the keyring cannot be locked");
}

void PrivateKeyring::stop() {
    sendSignal(m_daemon.processId(), SIGSTOP);
}

QString PrivateKeyring::secretTool(const QStringList &arguments) {
    QProcess tool;
    tool.setProcessChannelMode(QProcess::MergedChannels);
    tool.start(u"secret-tool"_s, arguments);
    tool.waitForFinished();
    return QString::fromUtf8(tool.readAll());
}

void PrivateKeyring::start() {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const QString &name : {u"HOME"_s, u"XDG_DATA_HOME"_s, u"XDG_RUNTIME_DIR"_s})
        environment.insert(name, m_home.path());
    m_daemon.setProcessEnvironment(environment);
    m_daemon.setProcessChannelMode(QProcess::MergedChannels);
    endWithParent(m_daemon);
    m_daemon.start(u"gnome-keyring-daemon"_s, {u"--foreground"_s, u"--unlock"_s, u"--components=secrets"_s});
    m_daemon.write("\n"); // the password of the login keyring: empty
    m_daemon.waitForBytesWritten();
    m_daemon.closeWriteChannel();
    if (!m_bus.waitForName(u"org.freedesktop.secrets"_s))
        throw std::runtime_error("the keyring does not start");
}

void PrivateKeyring::end() {
    m_daemon.kill();
    m_daemon.waitForFinished();
}

} // namespace velmo::testing
