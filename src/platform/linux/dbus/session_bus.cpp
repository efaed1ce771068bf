#include "platform/linux/dbus/session_bus.h"

#include "base/interface.h"
#include "platform/linux/dbus/bus_adaptors.h"
#include "platform/linux/session_bus_presence.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusError>
#include <QDBusPendingCallWatcher>

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

const QString kApplicationInterface = u"org.freedesktop.Application"_s;
const QString kCommandsInterface = u"com.tarnwell.velmo.Commands"_s;

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
        return CommandOutcome{kFailure, QString(),
                              u"Velmo runs but does not answer; it may be busy or stopped."_s};
    }
    const QVariantList values = reply.arguments();
    return CommandOutcome{values.value(0).toInt(), values.value(1).toString(), values.value(2).toString()};
}

} // namespace

class SessionBus::Parts : private Unmovable {
public:
    explicit Parts(const QString &name) : m_name(name), m_path(u'/' + QString(name).replace(u'.', u'/')) {}

    ~Parts() { release(); }

    Claim claim(ApplicationRequests &requests) {
        if (!isConnected())
            return Claim::NoBus;
        auto exported = std::make_unique<QObject>();
        new DesktopApplicationAdaptor(exported.get(), requests); // owned by what is exported
        new CommandsAdaptor(exported.get(), requests);
        QDBusConnection bus = QDBusConnection::sessionBus();
        // First the object: whoever sees the name can call.
        bus.registerObject(m_path, exported.get());
        const auto reply =
            bus.interface()->registerService(m_name, QDBusConnectionInterface::DontQueueService,
                                             QDBusConnectionInterface::DontAllowReplacement);
        if (reply.value() != QDBusConnectionInterface::ServiceRegistered)
            return Claim::Taken;
        m_exported = std::move(exported);
        return Claim::Held;
    }

    void release() {
        if (!m_exported)
            return;
        QDBusConnection::sessionBus().unregisterService(m_name);
        m_exported.reset(); // which unregisters the object
    }

    void call(const QString &interface, const QString &method, const QVariantList &arguments,
              std::chrono::milliseconds patience, const Answer &answer) {
        if (!isConnected()) {
            QMetaObject::invokeMethod(
                &m_calls, [answer] { answer(std::nullopt); }, Qt::QueuedConnection);
            return;
        }
        QDBusMessage message = QDBusMessage::createMethodCall(m_name, m_path, interface, method);
        message.setArguments(arguments);
        message.setAutoStartService(false); // only one that runs already is meant
        auto *watcher = new QDBusPendingCallWatcher(
            QDBusConnection::sessionBus().asyncCall(message, static_cast<int>(patience.count())), &m_calls);
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
    std::unique_ptr<QObject> m_exported; ///< While this process goes by the name.
    QObject m_calls;                     ///< Owns the calls under way.
};

SessionBus::SessionBus(const QString &name) : m_parts(std::make_unique<Parts>(name)) {}
SessionBus::~SessionBus() = default;

ApplicationBus::Claim SessionBus::claim(ApplicationRequests &requests) {
    return m_parts->claim(requests);
}

void SessionBus::release() {
    m_parts->release();
}

void SessionBus::activate(Answer answer) {
    m_parts->call(kApplicationInterface, u"Activate"_s, {QVariantMap()}, kPatience, answer);
}

void SessionBus::open(const QStringList &addresses, Answer answer) {
    m_parts->call(kApplicationInterface, u"Open"_s, {addresses, QVariantMap()}, kPatience, answer);
}

void SessionBus::run(const QStringList &words, std::chrono::milliseconds patience, Answer answer) {
    m_parts->call(kCommandsInterface, u"Run"_s, {words}, patience, answer);
}

} // namespace velmo
