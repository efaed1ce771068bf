#pragma once

namespace velmo {

/// The level display of a running recording. Main thread.
class LevelMonitor {
public:
    LevelMonitor() = default;
    LevelMonitor(const LevelMonitor &) = delete;
    LevelMonitor &operator=(const LevelMonitor &) = delete;
    virtual ~LevelMonitor() = default;

    virtual void startMonitoring() = 0;
    /// Also called when nothing is monitored.
    virtual void stopMonitoring() = 0;
};

} // namespace velmo
