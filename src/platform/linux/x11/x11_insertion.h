#pragma once

#include "base/interface.h"
#include "base/main_queue.h"
#include "base/result.h"
#include "platform/clipboard.h"
#include "platform/focused_window.h"
#include "platform/key_injector.h"

#include <QString>
#include <memory>

namespace velmo {

struct X11InsertionOptions {
    QString display; ///< As in $DISPLAY; empty for what that says.

    /// In a Wayland session keys sent here reach only part of the desktop: better none.
    bool mayInject = true;

    ClipboardSaveLimits saveLimits = {};
};

/// What text insertion needs of an X display, on a connection and a thread of their own. Made and destroyed on
/// the main thread; what still waits for an answer when it is destroyed gets none.
class X11Insertion : private Unmovable {
public:
    /// Asks the X server a few things and waits for the answers. The failure is a sentence. `queue` outlives
    /// the object.
    static Result<std::unique_ptr<X11Insertion>, QString> open(MainQueue &queue,
                                                               const X11InsertionOptions &options);

    ~X11Insertion();

    [[nodiscard]] Clipboard &clipboard();
    [[nodiscard]] Clipboard &primarySelection();
    [[nodiscard]] KeyInjector &keyInjector();
    [[nodiscard]] FocusedWindowFinder &focusedWindow();

private:
    struct Parts;
    explicit X11Insertion(std::unique_ptr<Parts> parts);

    std::unique_ptr<Parts> m_parts;
};

} // namespace velmo
