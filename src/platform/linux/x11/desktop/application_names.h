#pragma once

#include <QString>

namespace velmo::x11 {

/// What a window says about the application it belongs to; what it does not say is empty.
struct WindowIdentity {
    QString desktopId; ///< Id of the desktop file without ".desktop", when the toolkit tells it.
    QString instance;  ///< First part of WM_CLASS, mostly the name of the program file.
    QString className; ///< Second part of WM_CLASS.
    QString title;
    qint64 process = 0;
};

/// The application's name as people know it, in their language: the name in the desktop file that belongs to
/// the window, otherwise the window's class, otherwise its title. Reads desktop files, so it may take a
/// while. One thread at a time.
///
///   {"", "gimp-2.10", "Gimp-2.10", …}             "GNU Image Manipulation Program": StartupWMClass says so
///   {"org.kde.kate", "kate", "kate", …}           "Kate": the toolkit names the desktop file
///   {"", "xyz", "Xyz", …} without a desktop file  "Xyz"
[[nodiscard]] QString applicationName(const WindowIdentity &window);

} // namespace velmo::x11
