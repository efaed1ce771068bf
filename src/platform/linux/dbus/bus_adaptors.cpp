#include "platform/linux/dbus/bus_adaptors.h"

#include <QDBusConnection>

namespace velmo {

void DesktopApplicationAdaptor::Activate(const QVariantMap &) {
    m_requests.activate();
}

void DesktopApplicationAdaptor::Open(const QStringList &uris, const QVariantMap &) {
    m_requests.open(uris);
}

void DesktopApplicationAdaptor::ActivateAction(const QString &, const QVariantList &, const QVariantMap &) {
    m_requests.activate(); // the desktop file names no actions
}

int CommandsAdaptor::Run(const QStringList &words, const QDBusMessage &call, QString &, QString &) {
    call.setDelayedReply(true);
    m_requests.run(words, [call](const CommandOutcome &outcome) {
        QDBusConnection::sessionBus().send(
            call.createReply({outcome.status, outcome.output, outcome.message}));
    });
    return 0;
}

} // namespace velmo
