#include "ui/models/onboarding_view.h"

#include "dictation/gestures/hotkey_listener.h"
#include "platform/accessibility_permission.h"
#include "platform/microphone_permission.h"
#include "platform/microphone_presence.h"
#include "platform/system_settings.h"
#include "ui/models/platform_texts.h"
#include "ui/models/speech_texts.h"

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;

namespace velmo {

namespace {

constexpr auto kPollInterval = 1s;

/// Long enough to read that all is set (a product decision).
constexpr auto kCompletionDelay = 2s;

} // namespace

OnboardingView::OnboardingView(const Collaborators &collaborators)
    : m_with(collaborators), m_languages(m_with.preferences, m_with.watch) {
    const TriggerKeyCapture *key = &m_with.triggerKey;
    for (const auto change : {&TriggerKeyCapture::keyNameChanged, &TriggerKeyCapture::isCapturingChanged,
                              &TriggerKeyCapture::refusalChanged})
        connect(key, change, this, &OnboardingView::update);
    connect(&m_with.service, &ServiceWatch::changed, this, &OnboardingView::speechChanged);
    connect(&m_languages, &LanguageChoice::primaryLanguageChanged, this, &OnboardingView::speechChanged);
    read();
}

QString OnboardingView::speech() const {
    const QString standing = speech_texts::standing(m_with.service).toHtmlEscaped();
    const QString problem = speech_texts::languagesProblem({m_languages.primaryLanguage()}, m_with.service);
    const QString remedy = speech_texts::remedyForSilence(m_with.service);
    if (!remedy.isEmpty())
        return u"%1 %2"_s.arg(standing, remedy);
    if (problem.isEmpty())
        return standing;
    return tr("%1. %2 Get a model on the Speech page.").arg(standing, problem.toHtmlEscaped());
}

bool OnboardingView::isSpeechMissing() const {
    return m_with.service.standing() == ServiceWatch::Standing::Silent ||
           !m_with.service.failure().isEmpty() ||
           !speech_texts::notUnderstood({m_languages.primaryLanguage()}, m_with.service).isEmpty();
}

QString OnboardingView::waitingText() const {
    if (!m_hasAccessibility)
        return tr("Waiting for Accessibility permission...");
    if (!m_hasFnKey)
        return tr("Configure the %1 key to continue...").arg(m_with.triggerKey.keyName());
    return m_hasMicrophone ? QString() : tr("Grant microphone access to continue...");
}

QString OnboardingView::doneText() const {
    return tr("Hold %1 to dictate, or double-tap %1 for hands-free mode.").arg(m_with.triggerKey.keyName());
}

void OnboardingView::start() {
    m_look = m_with.service.look();
    read(); // what there is from the start is no change
    poll();
}

void OnboardingView::stop() {
    m_timer.reset();
    m_look.reset();
    m_with.triggerKey.cancel();
}

void OnboardingView::act() {
    if (!m_hasAccessibility)
        m_with.systemSettings.open(SystemSettings::Page::Keyboard);
    else if (m_with.triggerKey.isCapturing())
        m_with.triggerKey.cancel();
    else if (!m_hasFnKey)
        m_with.triggerKey.begin();
    else if (m_with.microphone.status() == MicrophonePermission::Status::Granted)
        m_with.systemSettings.open(SystemSettings::Page::Sound);
    else
        requestMicrophone();
}

void OnboardingView::done() {
    m_completion.reset();
    Q_EMIT completed();
    Q_EMIT closed();
}

void OnboardingView::poll() {
    if (!m_with.listener.isUsingFnHotkey())
        m_with.listener.setupFnKey();
    look();
    m_with.microphonePresence.check(m_lifetime.guard([this](bool present) {
        m_isMicrophonePresent = present;
        look();
    }));
    m_timer = m_with.queue.after(kPollInterval, m_lifetime.guard([this] { poll(); }));
}

void OnboardingView::look() {
    const bool wasAllDone = isAllDone();
    read();
    if (!wasAllDone && isAllDone())
        m_completion = m_with.queue.after(kCompletionDelay, m_lifetime.guard([this] { Q_EMIT completed(); }));
    if (m_hasAccessibility && m_hasFnKey && !m_hasMicrophone)
        requestMicrophone();
}

void OnboardingView::read() {
    m_hasAccessibility = m_with.accessibility.isTrusted();
    m_hasFnKey = m_with.listener.isUsingFnHotkey();
    m_hasMicrophone =
        m_with.microphone.status() == MicrophonePermission::Status::Granted && m_isMicrophonePresent;
    update();
}

/// Once; somebody who refused is not asked again.
void OnboardingView::requestMicrophone() {
    if (std::exchange(m_micRequested, true))
        return;
    m_with.microphone.request(onMain(m_with.queue, m_lifetime, [this](bool) { look(); }));
}

void OnboardingView::update() {
    const QList<OnboardingStep> steps = {accessibilityStep(), keyStep(), microphoneStep()};
    if (steps == m_steps.rows())
        return;
    m_steps.setRows(steps);
    Q_EMIT stepsChanged();
}

OnboardingStep OnboardingView::accessibilityStep() const {
    OnboardingStep step = {
        .number = 1,
        .title = tr("Accessibility"),
        .description =
            tr("Lets Velmo detect the %1 key and type text into any app.").arg(m_with.triggerKey.keyName()),
        .isDone = m_hasAccessibility,
        .isCurrent = !m_hasAccessibility};
    if (!step.isCurrent)
        return step;
    step.hint = platform_texts::styledToggleCommandNote();
    if (m_with.systemSettings.canOpen(SystemSettings::Page::Keyboard)) {
        step.buttonText = platform_texts::openKeyboardSettings();
        step.buttonSymbol = u"arrow.up.forward"_s;
    }
    return step;
}

OnboardingStep OnboardingView::keyStep() const {
    const TriggerKeyCapture &key = m_with.triggerKey;
    OnboardingStep step = {
        .number = 2,
        .title = tr("%1 Key Setup").arg(key.keyName()),
        .description = tr("Set the %1 key to do nothing so Velmo can use it as your dictation trigger.")
                           .arg(key.keyName()),
        .isDone = m_hasFnKey,
        .isCurrent = m_hasAccessibility && !m_hasFnKey};
    if (!step.isDone && !step.isCurrent)
        step.note = tr("This will be needed after step 1.");
    if (!step.isCurrent)
        return step;
    if (key.isCapturing()) {
        step.buttonText = tr("Cancel");
        step.hint = key.refusal().isNull() ? key.instruction() : key.refusal();
    } else {
        step.buttonText = platform_texts::chooseAnotherKey();
        step.hint = platform_texts::missingTriggerKey(key.keyName());
    }
    return step;
}

OnboardingStep OnboardingView::microphoneStep() const {
    OnboardingStep step = {.number = 3,
                           .title = tr("Microphone"),
                           .description = tr("Velmo needs to hear your voice to transcribe speech."),
                           .isDone = m_hasMicrophone,
                           .isCurrent = m_hasAccessibility && m_hasFnKey && !m_hasMicrophone};
    if (!step.isDone && !step.isCurrent)
        step.note = tr("This will be requested after step 2.");
    if (!step.isCurrent)
        return step;
    step.hint = platform_texts::microphoneHint();
    if (m_with.systemSettings.canOpen(SystemSettings::Page::Sound))
        step.buttonText = platform_texts::openSoundSettings();
    return step;
}

} // namespace velmo
