#pragma once

#include "base/interface.h"
#include "dictation/dictation_state.h"

#include <functional>

namespace velmo {

/// What can be seen of Velmo, as far as its life is concerned. Main thread.
class UserInterface : public Interface {
public:
    /// Puts the status item into the tray, at rest; `pressed` is called whenever somebody presses it.
    virtual void showStatusItem(std::function<void()> pressed) = 0;
    virtual void updateStatusIcon(State state) = 0;

    /// Whether the desktop has a tray to show the item in now.
    [[nodiscard]] virtual bool hasTray() const = 0;

    /// Shows the popover at the status item, or closes it.
    virtual void togglePopover() = 0;
    virtual void closePopover() = 0;

    /// Shows the bar at the foot of the screen, which then stays.
    virtual void showOverlay() = 0;

    /// Shows the window, made the first time, in front of others.
    virtual void showMainWindow() = 0;
    virtual void showOnboarding() = 0;
    [[nodiscard]] virtual bool isOnboardingShown() const = 0;
};

} // namespace velmo
