#pragma once

#include "base/interface.h"

#include <functional>

namespace velmo {

/// Whether there is a microphone to record from: a sound server answers, and its default source is something people
/// can speak into.
class MicrophonePresence : public Interface {
public:
    using Answer = std::function<void(bool present)>;

    /// Looks now. Main thread; returns at once. The answer comes once, as a task of the main queue, within about a
    /// second; it does not come when this object is gone before.
    virtual void check(Answer answer) = 0;
};

} // namespace velmo
