#pragma once

#include <functional>

namespace velmo {

/// Whether there is a microphone to record from: a sound server answers, and its default source is something people
/// can speak into.
class MicrophonePresence {
public:
    using Answer = std::function<void(bool present)>;

    MicrophonePresence() = default;
    MicrophonePresence(const MicrophonePresence &) = delete;
    MicrophonePresence &operator=(const MicrophonePresence &) = delete;
    virtual ~MicrophonePresence() = default;

    /// Looks now. Main thread; returns at once. The answer comes once, as a task of the main queue, within about a
    /// second; it does not come when this object is gone before.
    virtual void check(Answer answer) = 0;
};

} // namespace velmo
