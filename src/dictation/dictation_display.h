#pragma once

#include "base/interface.h"
#include "dictation/dictation_state.h"

// What shows a dictation while it runs.
namespace velmo {

/// The floating bar that shows where a dictation is. Main thread.
class OverlayDisplay : public Interface {
public:
    virtual void update(State state) = 0;
};

/// The level display of a running recording. Main thread.
class LevelMonitor : public Interface {
public:
    virtual void startMonitoring() = 0;
    /// Also called when nothing is monitored.
    virtual void stopMonitoring() = 0;
};

} // namespace velmo
