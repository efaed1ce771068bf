#pragma once

#include "base/interface.h"
#include "dictation/dictation_state.h"

namespace velmo {

/// The floating bar that shows where a dictation is. Main thread.
class OverlayDisplay : public Interface {
public:
    virtual void update(State state) = 0;
};

} // namespace velmo
