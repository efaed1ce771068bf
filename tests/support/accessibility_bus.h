#pragma once

#include "base/interface.h"
#include "support/private_bus.h"

#include <QDBusConnection>
#include <QRect>
#include <QSet>

namespace velmo::testing {

/// What assistive technology is told of a part of a window.
struct AccessiblePart {
    QString role; ///< In the words of AT-SPI: "push button".
    QString name;
    bool isShown;
    QRect frame; ///< On the screen.
};

/// A session's bus for assistive technology, as it comes when a screen reader starts.
class AccessibilityBus : private Unmovable {
public:
    explicit AccessibilityBus(const PrivateBus &session);
    ~AccessibilityBus();

    /// All parts of all windows of all applications, each before the parts within it.
    [[nodiscard]] QList<AccessiblePart> parts();

    /// "push button: Quit" of everything that is shown.
    [[nodiscard]] QSet<QString> shown();

    /// Where to click on such a part, once it is shown and stays where it is.
    [[nodiscard]] QPoint middleOf(const QString &part);

private:
    struct Place {
        QString application;
        QString path;
    };
    QVariantList ask(const Place &place, const QString &interface, const QString &method,
                     const QVariantList &arguments);
    QVariantList ask(const Place &place, const QString &method);
    [[nodiscard]] AccessiblePart partAt(const Place &place);
    [[nodiscard]] QRect frameOf(const Place &place);
    [[nodiscard]] QList<Place> placesWithin(const Place &place);
    void collect(const Place &place, QList<AccessiblePart> &parts);

    QTemporaryDir m_folder;
    QProcess m_launcher;
    QDBusConnection m_bus;
};

} // namespace velmo::testing
