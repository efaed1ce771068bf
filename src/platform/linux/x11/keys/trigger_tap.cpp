#include "platform/linux/x11/keys/trigger_tap.h"

#include "base/log.h"

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;

namespace velmo::x11 {

namespace {

/// How often keys that are believed held are looked at after a press. Raw events tell of releases; this is
/// for those that never come: the machine slept, the keyboard went away.
constexpr auto kPollInterval = 200ms;

} // namespace

TriggerTap::TriggerTap(MainQueue &queue, std::shared_ptr<DesktopWatch> watch, Options options)
    : m_queue(queue), m_watch(std::move(watch)), m_options(std::move(options)) {}

TriggerTap::~TriggerTap() {
    stop();
}

bool TriggerTap::start(const QString &triggerKey, Handler handler) {
    if (!m_watch)
        return false;
    bool started = false;
    m_watch->run([&] { started = begin(triggerKey, std::move(handler)); });
    return started;
}

void TriggerTap::stop() {
    if (m_watch)
        m_watch->run([this] { end(); });
}

bool TriggerTap::begin(const QString &triggerKey, Handler handler) {
    const auto code = m_watch->keyboard().codeOf(triggerKey);
    if (!code || m_state)
        return false;
    m_key = triggerKey;
    m_code = static_cast<xcb_keycode_t>(*code);
    m_state.emplace(std::move(handler));
    m_watch->add(this);
    takeKey();
    return true;
}

void TriggerTap::end() {
    m_watch->remove(this);
    m_poll.reset();
    closeGrab();
    closeGuard();
    m_state.reset();
    m_grabState = GrabState::Unknown;
}

// What the keyboard does

void TriggerTap::inputMoved(const RawInput &input) {
    const bool isTrigger = input.kind != RawInput::Kind::ButtonPress && input.detail == m_code;
    if (isTrigger && input.kind == RawInput::Kind::KeyPress)
        triggerPressed(input);
    else if (isTrigger && !input.isSynthetic)
        triggerReleased(m_watch->timeOf(input));
    else if (!input.isSynthetic && input.kind != RawInput::Kind::KeyRelease)
        m_state->otherPressed(m_watch->timeOf(input));
}

void TriggerTap::triggerPressed(const RawInput &input) {
    if (input.isSynthetic) {
        m_state->pressedByProgram();
        return;
    }
    m_state->pressed(othersHeld(), m_watch->timeOf(input), uptime());
    m_poll = m_watch->loop().after(kPollInterval, [this] { pollKey(); });
}

void TriggerTap::triggerReleased(std::chrono::nanoseconds at) {
    m_state->released(at);
    if (m_grabState == GrabState::Taken || m_grabState == GrabState::Unguarded)
        takeKey(); // whoever had it may have let go
}

KeyFlags TriggerTap::othersHeld() const {
    InputDevices::KeySet held = m_watch->devices().keysHeld();
    held.reset(m_code);
    KeyFlags flags;
    for (std::size_t code = 0; code < held.size(); ++code) {
        if (held[code])
            flags |= m_watch->keyboard().flagsOf(static_cast<xkb_keycode_t>(code));
    }
    return flags;
}

void TriggerTap::pollKey() {
    m_watch->devices().dropKeysReleased();
    if (!m_state->isHeld())
        return;
    if (m_watch->devices().keysHeld()[m_code])
        m_poll = m_watch->loop().after(kPollInterval, [this] { pollKey(); });
    else
        triggerReleased(uptime());
}

void TriggerTap::devicesChanged() {
    pollKey();
}

void TriggerTap::keyboardChanged() {
    const auto code = static_cast<xcb_keycode_t>(m_watch->keyboard().codeOf(m_key).value_or(0));
    if (code == m_code)
        return;
    m_state->released(uptime());
    closeGrab();
    m_code = code;
    takeKey();
}

// Keeping it from others

void TriggerTap::enable() {
    takeKey();
}

/// Asks the guard to stand by; the key is grabbed when it does.
void TriggerTap::takeKey() {
    if (m_code != 0 && openGrab() && startGuard())
        m_guard->watch(m_code, m_grab->resource());
}

bool TriggerTap::openGrab() {
    if (m_grab)
        return true;
    m_grab = TriggerGrab::open(m_options.display);
    if (m_grab)
        m_watch->loop().addSource(m_grab->descriptor(), [this] { answerGrab(); });
    return m_grab != nullptr;
}

void TriggerTap::answerGrab() {
    while (const auto question = m_grab->next())
        answer(*question);
    if (m_grab->isLost())
        grabLost();
}

void TriggerTap::answerAllTheServerAsked() {
    if (!m_grab)
        return;
    m_grab->catchUp();
    answerGrab();
}

void TriggerTap::answer(const TriggerGrab::Question &question) {
    m_watch->catchUp(); // the raw event decides
    if (question.code == m_code && m_state->hides())
        m_grab->swallow(question);
    else
        m_grab->passOn(question);
}

void TriggerTap::grabLost() {
    closeGrab();
    report(u"Trigger key was let go because its answers came too late"_s);
    m_state->disabled(uptime());
}

void TriggerTap::closeGrab() {
    if (!m_grab)
        return;
    m_watch->loop().removeSource(m_grab->descriptor());
    m_grab.reset();
}

// The guard

bool TriggerTap::startGuard() {
    if (m_guard)
        return true;
    m_guard = KeyGuardProcess::start(m_options.guardProgram, m_options.display);
    if (m_guard)
        m_watch->loop().addSource(m_guard->descriptor(), [this] { hearGuard(); });
    else
        setGrabState(GrabState::Unguarded);
    return m_guard != nullptr;
}

void TriggerTap::hearGuard() {
    for (auto news = m_guard->next(); news != KeyGuardProcess::News::None; news = m_guard->next()) {
        if (news == KeyGuardProcess::News::Gone) {
            guardGone();
            return;
        }
        if (news == KeyGuardProcess::News::Question) {
            answerAllTheServerAsked();
            m_guard->answer();
        } else if (m_grab) {
            grabKey();
        }
    }
}

void TriggerTap::grabKey() {
    setGrabState(m_grab->take(m_code) ? GrabState::Hidden : GrabState::Taken);
    answerGrab();
}

void TriggerTap::guardGone() {
    if (m_grab)
        m_grab->giveBack();
    closeGuard();
    setGrabState(GrabState::Unguarded);
}

void TriggerTap::closeGuard() {
    if (!m_guard)
        return;
    m_watch->loop().removeSource(m_guard->descriptor());
    m_guard.reset();
}

/// Tells of what changes for the person. That the key is hidden is what they expect and not worth a line,
/// unless it was not.
void TriggerTap::setGrabState(GrabState state) {
    const GrabState previous = std::exchange(m_grabState, state);
    if (previous == state)
        return;
    switch (state) {
    case GrabState::Taken:
        report(u"Trigger key is grabbed by another application, so other applications see it too"_s);
        break;
    case GrabState::Unguarded:
        report(u"Key guard does not run, so other applications see the trigger key too"_s);
        break;
    case GrabState::Hidden:
        if (previous != GrabState::Unknown)
            report(u"Trigger key is hidden from other applications again"_s);
        break;
    case GrabState::Unknown:
        break;
    }
}

/// The main thread writes the line: whoever reads the log may be slow.
void TriggerTap::report(const QString &line) {
    m_queue.post([line] { log(LogTag::Hotkey, line); });
}

} // namespace velmo::x11
