#pragma once

#include "base/interface.h"
#include "support/private_bus.h"

#include <QDBusConnection>

namespace velmo::testing {

/// What assistive technology is told of a part of a window.
struct AccessiblePart {
    QString role; ///< In the words of AT-SPI: "push button".
    QString name;
    bool isShown;
};

/// A session's bus for assistive technology, as it comes when a screen reader starts.
class AccessibilityBus : private Unmovable {
public:
    explicit AccessibilityBus(const PrivateBus &session);
    ~AccessibilityBus();

    /// All parts of all windows of all applications, each before the parts within it.
    [[nodiscard]] QList<AccessiblePart> parts();

private:
    struct Place {
        QString application;
        QString path;
    };
    QVariantList ask(const Place &place, const QString &interface, const QString &method,
                     const QVariantList &arguments);
    QVariantList ask(const Place &place, const QString &method);
    [[nodiscard]] AccessiblePart partAt(const Place &place);
    [[nodiscard]] QList<Place> placesWithin(const Place &place);
    void collect(const Place &place, QList<AccessiblePart> &parts);

    QTemporaryDir m_folder;
    QProcess m_launcher;
    QDBusConnection m_bus;
};

} // namespace velmo::testing
