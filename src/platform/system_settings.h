#pragma once

#include "base/interface.h"

namespace velmo {

/// The desktop's own settings, for what Velmo cannot change itself. Main thread.
class SystemSettings : public Interface {
public:
    enum class Page {
        Keyboard, ///< Where commands are bound to keys.
        Sound,    ///< Where the microphone is chosen.
    };

    /// Whether this desktop is known to have such a page.
    [[nodiscard]] virtual bool canOpen(Page page) const = 0;

    /// Returns at once; does nothing where there is no such page.
    virtual void open(Page page) = 0;
};

} // namespace velmo
