#pragma once

#include "dictation/dictation_state.h"

namespace velmo {

/// The floating bar that shows where a dictation is. Main thread.
class OverlayDisplay {
public:
    OverlayDisplay() = default;
    OverlayDisplay(const OverlayDisplay &) = delete;
    OverlayDisplay &operator=(const OverlayDisplay &) = delete;
    virtual ~OverlayDisplay() = default;

    virtual void update(State state) = 0;
};

} // namespace velmo
