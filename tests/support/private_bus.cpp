#include "support/private_bus.h"

#include "support/child_process.h"
#include "support/wait_until.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QFile>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace velmo::testing {

namespace {

constexpr const char *kVariable = "DBUS_SESSION_BUS_ADDRESS";

QByteArray configuration(const QString &folder) {
    return "<busconfig><type>session</type><listen>unix:dir=" + QFile::encodeName(folder) +
           "</listen><policy context=\"default\"><allow send_destination=\"*\" eavesdrop=\"true\"/>"
           "<allow eavesdrop=\"true\"/><allow own=\"*\"/></policy></busconfig>";
}

} // namespace

PrivateBus::PrivateBus() : m_addressBefore(qgetenv(kVariable)) {
    const QString path = m_folder.filePath(u"bus.conf"_s);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(configuration(m_folder.path())) < 0)
        throw std::runtime_error("the bus cannot be configured");
    file.close();
    endWithParent(m_daemon);
    m_daemon.start(u"dbus-daemon"_s, {u"--nofork"_s, u"--print-address"_s, u"--config-file="_s + path});
    while (!m_daemon.canReadLine()) {
        if (!m_daemon.waitForReadyRead())
            throw std::runtime_error("the bus does not start");
    }
    m_address = QString::fromLatin1(m_daemon.readLine()).trimmed();
    qputenv(kVariable, m_address.toLatin1());
}

PrivateBus::~PrivateBus() {
    if (m_addressBefore.isEmpty())
        qunsetenv(kVariable);
    else
        qputenv(kVariable, m_addressBefore);
    m_daemon.kill();
    m_daemon.waitForFinished();
}

bool PrivateBus::waitForName(const QString &name) const {
    const QString connectionName = u"waits for "_s + name;
    bool isOwned = false;
    {
        const QDBusConnection connection = QDBusConnection::connectToBus(m_address, connectionName);
        isOwned = waitUntil([&] { return connection.interface()->isServiceRegistered(name); });
    }
    QDBusConnection::disconnectFromBus(connectionName);
    return isOwned;
}

} // namespace velmo::testing
