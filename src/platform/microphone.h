#pragma once

#include "base/interface.h"

#include <QString>
#include <chrono>
#include <memory>
#include <span>

namespace velmo {

/// What a microphone delivers: interleaved 32-bit floats, full scale at -1 and 1.
struct CaptureFormat {
    int sampleRate = 0; ///< Frames a second.
    int channels = 0;
};

/// Why nothing is captured, or no longer, as a sentence for the person.
struct MicrophoneFailure {
    QString description;
};

/// Whoever listens. The operations are called one at a time, on the capture thread or from within
/// `Microphone::open`; they must return quickly and must not close the capture.
class CaptureListener : public Interface {
public:
    /// The microphone is open. Called once, before the first frames; the format stays, whatever device the capture
    /// moves to later.
    virtual void opened(const CaptureFormat &format) = 0;

    /// Whole frames, any number of them, in the order of time and without holes. The first of them was captured at
    /// that moment of `MainQueue::uptime()`, or some milliseconds before: the way through the sound server counts in.
    virtual void captured(std::span<const float> samples, std::chrono::nanoseconds at) = 0;

    /// Nothing more will come: the microphone could not be opened, or is gone and no other took its place.
    virtual void ended(const MicrophoneFailure &failure) = 0;
};

/// An open microphone; dropping it closes it, after which the listener is not called again. Never waits for a sound
/// server.
class Capture : public Interface {};

/// The microphone the desktop has as its default, in its native rate and channels.
class Microphone : public Interface {
public:
    /// Begins to open the default microphone and returns at once. Should that device vanish or another become the
    /// default, the capture goes on there. Main thread; the listener outlives the capture, the capture does not
    /// outlive the microphone.
    [[nodiscard]] virtual std::unique_ptr<Capture> open(CaptureListener &listener) = 0;
};

} // namespace velmo
