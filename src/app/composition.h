#pragma once

#include <memory>

namespace velmo {

class MainQueue;
class Preferences;

/// The parts list: builds each component once, from real parts, when it is first asked for, and is the only
/// place that knows which parts those are. Main thread.
class Composition {
public:
    Composition();
    Composition(const Composition &) = delete;
    Composition &operator=(const Composition &) = delete;
    ~Composition();

    MainQueue &mainQueue();

private:
    std::unique_ptr<MainQueue> m_mainQueue;
};

} // namespace velmo
