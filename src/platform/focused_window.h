#pragma once

#include "base/interface.h"
#include "platform/display_client.h"

#include <QString>
#include <functional>
#include <optional>

namespace velmo {

/// The window that gets what is typed.
struct FocusedWindow {
    DisplayClient client{};
    QString windowClass; ///< The program's name for its windows: "XTerm", "firefox"; empty when it has none.
};

/// Finds the window that gets what is typed. Main thread; no call waits.
class FocusedWindowFinder : public Interface {
public:
    /// Answers once, as a task of the main queue; nothing when keys go nowhere.
    virtual void find(std::function<void(std::optional<FocusedWindow>)> done) = 0;
};

} // namespace velmo
