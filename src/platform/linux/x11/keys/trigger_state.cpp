#include "platform/linux/x11/keys/trigger_state.h"

using namespace std::chrono_literals;

namespace velmo::x11 {

namespace {

/// A press that is read later than this was made while we were stopped or starved of time. The person has
/// given up on it, and a recording that begins now would be a surprise.
constexpr auto kStale = 1s;

} // namespace

void TriggerState::pressed(KeyFlags others, Time at, Time now) {
    if (m_isHeld) // on a second keyboard
        return;
    m_hides = false;
    if (now - at > kStale)
        return;
    m_isHeld = true;
    m_hides =
        report(TapEventType::FlagsChanged, others | KeyFlag::SecondaryFunction, at) == TapAnswer::Suppress;
}

void TriggerState::released(Time at) {
    if (!m_isHeld)
        return;
    m_isHeld = false;
    // Without other flags, whatever is held by now: the release of a bare press must arrive as one.
    report(TapEventType::FlagsChanged, {}, at);
}

void TriggerState::otherPressed(Time at) {
    if (m_isHeld)
        report(TapEventType::OtherPressed, {}, at);
}

void TriggerState::disabled(Time at) {
    released(at);
    report(TapEventType::DisabledByTimeout, {}, at);
}

} // namespace velmo::x11
