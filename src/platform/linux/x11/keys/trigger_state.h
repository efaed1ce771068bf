#pragma once

#include "platform/event_tap.h"

namespace velmo::x11 {

/// What is believed about the trigger key, and what is reported of it. The tap's thread alone uses it.
class TriggerState {
public:
    using Time = std::chrono::nanoseconds;

    explicit TriggerState(EventTap::Handler report) : m_report(std::move(report)) {}

    /// A person pressed the key at `at`, and that was read at `now`. `others` are the modifiers held with it.
    void pressed(KeyFlags others, Time at, Time now);
    /// A program pressed it. Not reported, and not kept from other applications.
    void pressedByProgram() { m_hides = false; }
    /// The key is up: it was released, or it turns out not to be held any more.
    void released(Time at);
    /// Another key or a button went down.
    void otherPressed(Time at);
    /// The grab is lost.
    void disabled(Time at);

    [[nodiscard]] bool isHeld() const { return m_isHeld; }

    /// Whether the latest press, with its repeats and its release, is kept from other applications.
    [[nodiscard]] bool hides() const { return m_hides; }

private:
    TapAnswer report(TapEventType type, KeyFlags flags, Time at) {
        return m_report(TapEvent{type, flags, at});
    }

    EventTap::Handler m_report;
    bool m_isHeld = false; ///< A press was reported, its release not yet.
    bool m_hides = false;
};

} // namespace velmo::x11
