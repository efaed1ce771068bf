#include "dictation/gestures/fn_key_interceptor.h"

#include "base/log.h"

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

/// With any of these held, the trigger key is part of a shortcut. Caps Lock is not among them.
constexpr KeyFlags kOtherModifiers = KeyFlag::Shift | KeyFlag::Control | KeyFlag::Option | KeyFlag::Command;

} // namespace

FnKeyInterceptor::FnKeyInterceptor(EventTap &tap, MainQueue &queue, QString triggerKey)
    : m_tap(tap), m_queue(queue), m_triggerKey(std::move(triggerKey)) {}

FnKeyInterceptor::~FnKeyInterceptor() {
    stop();
}

bool FnKeyInterceptor::start() {
    if (!m_tap.start(m_triggerKey, [this](const TapEvent &event) { return handleEvent(event); })) {
        log(LogTag::FnKey, u"Failed to create event tap"_s);
        return false;
    }
    log(LogTag::FnKey, u"Event tap active — bare Fn suppression enabled"_s);
    return true;
}

void FnKeyInterceptor::stop() {
    m_tap.stop();
}

TapAnswer FnKeyInterceptor::handleEvent(const TapEvent &event) {
    switch (event.type) {
    case TapEventType::DisabledByTimeout:
    case TapEventType::DisabledByUserInput:
        m_tap.enable();
        return TapAnswer::Pass;
    case TapEventType::OtherPressed:
        if (m_fnIsDown)
            scheduleCombination();
        return TapAnswer::Pass;
    case TapEventType::FlagsChanged:
        return handleFlags(event);
    }
    return TapAnswer::Pass;
}

TapAnswer FnKeyInterceptor::handleFlags(const TapEvent &event) {
    if (event.flags & kOtherModifiers) {
        m_fnIsDown = false;
        return TapAnswer::Pass;
    }
    const bool isDown = event.flags.testFlag(KeyFlag::SecondaryFunction);
    if (isDown == m_fnIsDown)
        return TapAnswer::Pass;
    m_fnIsDown = isDown;
    schedule(isDown ? &FnKeyInterceptor::onFnDown : &FnKeyInterceptor::onFnUp, event.time);
    return TapAnswer::Suppress;
}

void FnKeyInterceptor::schedule(KeyCallback FnKeyInterceptor::*callback, std::chrono::nanoseconds time) {
    m_queue.post(m_lifetime.guard([this, callback, time] {
        if (this->*callback)
            (this->*callback)(time);
    }));
}

void FnKeyInterceptor::scheduleCombination() {
    m_queue.post(m_lifetime.guard([this] {
        if (onCombinationUsed)
            onCombinationUsed();
    }));
}

} // namespace velmo
