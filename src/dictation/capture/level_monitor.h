#pragma once

#include "base/interface.h"

namespace velmo {

/// The level display of a running recording. Main thread.
class LevelMonitor : public Interface {
public:
    virtual void startMonitoring() = 0;
    /// Also called when nothing is monitored.
    virtual void stopMonitoring() = 0;
};

} // namespace velmo
