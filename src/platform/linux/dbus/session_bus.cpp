#include "platform/linux/dbus/session_bus.h"

#include "platform/linux/dbus/bus_adaptors.h"
#include "platform/linux/session_bus_presence.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusError>
#include <QDBusPendingCallWatcher>

namespace velmo {

namespace {

const QString kApplicationInterface = QStringLiteral("org.freedesktop.Application");
const QString kCommandsInterface = QStringLiteral("com.tarnwell.velmo.Commands");

/// An application that runs takes these at once.
constexpr std::chrono::milliseconds kPatience{5000};

constexpr int kFailure = 1;

bool isNobody(const QDBusError &error) {
    return error.type() == QDBusError::ServiceUnknown || error.type() == QDBusError::Disconnected ||
           error.name() == u"org.freedesktop.DBus.Error.NameHasNoOwner";
}

std::optional<CommandOutcome> outcomeOf(const QDBusMessage &reply) {
    if (reply.type() == QDBusMessage::ErrorMessage) {
        if (isNobody(QDBusError(reply)))
            return std::nullopt;
        return CommandOutcome{kFailure, QString(), QStringLiteral("The running Velmo does not answer.")};
    }
    const QVariantList values = reply.arguments();
    return CommandOutcome{values.value(0).toInt(), values.value(1).toString(), values.value(2).toString()};
}

} // namespace

class SessionBus::Parts {
public:
    explicit Parts(const QString &name) : m_name(name), m_path(u'/' + QString(name).replace(u'.', u'/')) {}

    ~Parts() {
        if (!m_holdsName)
            return;
        QDBusConnection::sessionBus().unregisterService(m_name);
        QDBusConnection::sessionBus().unregisterObject(m_path);
    }
    Parts(const Parts &) = delete;
    Parts &operator=(const Parts &) = delete;

    Claim claim(ApplicationRequests &requests) {
        if (!isConnected())
            return Claim::NoBus;
        new DesktopApplicationAdaptor(&m_exported, requests); // owned by what is exported
        new CommandsAdaptor(&m_exported, requests);
        QDBusConnection bus = QDBusConnection::sessionBus();
        // First the object: whoever sees the name can call.
        bus.registerObject(m_path, &m_exported);
        const auto reply =
            bus.interface()->registerService(m_name, QDBusConnectionInterface::DontQueueService,
                                             QDBusConnectionInterface::DontAllowReplacement);
        m_holdsName = reply.value() == QDBusConnectionInterface::ServiceRegistered;
        if (!m_holdsName)
            bus.unregisterObject(m_path);
        return m_holdsName ? Claim::Held : Claim::Taken;
    }

    void call(const QString &interface, const QString &method, const QVariantList &arguments,
              std::chrono::milliseconds patience, const Answer &answer) {
        if (!isConnected()) {
            QMetaObject::invokeMethod(
                &m_exported, [answer] { answer(std::nullopt); }, Qt::QueuedConnection);
            return;
        }
        QDBusMessage message = QDBusMessage::createMethodCall(m_name, m_path, interface, method);
        message.setArguments(arguments);
        message.setAutoStartService(false); // only one that runs already is meant
        auto *watcher = new QDBusPendingCallWatcher(
            QDBusConnection::sessionBus().asyncCall(message, static_cast<int>(patience.count())),
            &m_exported);
        QObject::connect(watcher, &QDBusPendingCallWatcher::finished, watcher, [watcher, answer] {
            watcher->deleteLater();
            answer(outcomeOf(watcher->reply()));
        });
    }

private:
    [[nodiscard]] static bool isConnected() {
        return hasSessionBus() && QDBusConnection::sessionBus().isConnected();
    }

    const QString m_name;
    const QString m_path;
    QObject m_exported;
    bool m_holdsName = false;
};

SessionBus::SessionBus(const QString &name) : m_parts(std::make_unique<Parts>(name)) {}
SessionBus::~SessionBus() = default;

ApplicationBus::Claim SessionBus::claim(ApplicationRequests &requests) {
    return m_parts->claim(requests);
}

void SessionBus::activate(Answer answer) {
    m_parts->call(kApplicationInterface, QStringLiteral("Activate"), {QVariantMap()}, kPatience, answer);
}

void SessionBus::open(const QStringList &addresses, Answer answer) {
    m_parts->call(kApplicationInterface, QStringLiteral("Open"), {addresses, QVariantMap()}, kPatience,
                  answer);
}

void SessionBus::run(const QStringList &words, std::chrono::milliseconds patience, Answer answer) {
    m_parts->call(kCommandsInterface, QStringLiteral("Run"), {words}, patience, answer);
}

} // namespace velmo
