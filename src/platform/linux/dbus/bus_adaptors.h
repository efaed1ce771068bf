#pragma once

#include "platform/application_bus.h"

#include <QDBusAbstractAdaptor>
#include <QDBusMessage>
#include <QVariantMap>

namespace velmo {

// NOLINTBEGIN(readability-identifier-naming): the slots are methods of the bus, whose names begin with a capital

/// org.freedesktop.Application: how desktops start, show and hand addresses to an application.
class DesktopApplicationAdaptor final : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    DesktopApplicationAdaptor(QObject *exported, ApplicationRequests &requests)
        : QDBusAbstractAdaptor(exported), m_requests(requests) {}

public Q_SLOTS:
    void Activate(const QVariantMap &platformData);
    void Open(const QStringList &uris, const QVariantMap &platformData);
    void ActivateAction(const QString &name, const QVariantList &parameters, const QVariantMap &platformData);

private:
    ApplicationRequests &m_requests;
};

/// Words of the command line, carried out by the running application.
class CommandsAdaptor final : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.tarnwell.velmo.Commands")

public:
    CommandsAdaptor(QObject *exported, ApplicationRequests &requests)
        : QDBusAbstractAdaptor(exported), m_requests(requests) {}

public Q_SLOTS:
    /// The reply is sent when the command has ended.
    int Run(const QStringList &words, const QDBusMessage &call, QString &output, QString &message);

private:
    ApplicationRequests &m_requests;
};

// NOLINTEND(readability-identifier-naming)

} // namespace velmo
