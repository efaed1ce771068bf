#pragma once

#include "base/main_queue.h"
#include "dictation/dictation_state.h"

#include <QIcon>
#include <QRect>
#include <QSystemTrayIcon>
#include <functional>
#include <map>

namespace velmo {

class DesktopPanels;

/// The item in the tray, whose image tells where a dictation is, in one colour that stands out from the panel. Main
/// thread.
class StatusItem {
public:
    /// @param isDesktopDark whether panels are likely to be; for as long as none can be looked at.
    /// @param pressed called for each press.
    StatusItem(MainQueue &queue, const DesktopPanels &panels, bool isDesktopDark,
               std::function<void()> pressed);

    void setState(State state);

    /// Where the item is on the desktop; empty where the tray does not tell.
    [[nodiscard]] QRect frame() const { return m_icon.geometry(); }

    /// Whether the desktop has a tray to show it in now.
    [[nodiscard]] static bool hasHost() { return QSystemTrayIcon::isSystemTrayAvailable(); }

    /// Whether the colours of the desktop make panels likely that are dark.
    [[nodiscard]] static bool isDesktopDark();

private:
    void followPanel(int looksLeft);
    void lookAtPanel();
    [[nodiscard]] QColor panelColor() const;
    void draw();

    MainQueue &m_queue;
    const DesktopPanels &m_panels;
    bool m_isPanelDark;
    State m_state = State::idle;
    /// Made once: Qt keeps what it has drawn of each icon, also of those that are gone.
    std::map<State, QIcon> m_icons;
    QSystemTrayIcon m_icon;
    MainQueue::Timer m_lookTimer;
};

} // namespace velmo
