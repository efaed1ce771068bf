#pragma once

#include "base/lifetime.h"
#include "base/main_queue.h"
#include "service/status/service_watch.h"
#include "ui/models/language_choice.h"
#include "ui/models/row_model.h"
#include "ui/models/speech_trial.h"
#include "ui/models/trigger_key_capture.h"

#include <QtQml/qqmlregistration.h>

namespace velmo {

class AccessibilityPermission;
class MicrophonePermission;
class MicrophonePresence;
class SystemSettings;

/// A step of the set-up as it is shown.
struct OnboardingStep {
    Q_GADGET
    Q_PROPERTY(int number MEMBER number)
    Q_PROPERTY(QString title MEMBER title)
    Q_PROPERTY(QString description MEMBER description)
    Q_PROPERTY(bool done MEMBER isDone)
    Q_PROPERTY(bool current MEMBER isCurrent)
    Q_PROPERTY(QString buttonText MEMBER buttonText)
    Q_PROPERTY(QString buttonSymbol MEMBER buttonSymbol)
    Q_PROPERTY(QString hint MEMBER hint)
    Q_PROPERTY(QString note MEMBER note)

public:
    int number = 0;
    QString title = {};
    QString description = {};
    bool isDone = false;
    bool isCurrent = false;  ///< The first that is not done: it alone has a button and a hint.
    QString buttonText = {}; ///< Null where there is nothing to press.
    QString buttonSymbol = {};
    QString hint = {}; ///< Styled text.
    QString note = {}; ///< While an earlier step is not done.

    [[nodiscard]] int key() const { return number; }
    bool operator==(const OnboardingStep &) const = default;
};

/// The set-up: three things Velmo needs of the desktop, one step after the other, and in which language and by what speech is
/// recognised. It looks once a second while it is shown and goes on by itself when a step is done; two seconds after the last
/// one it is complete, and stays for dictation to be tried until the person is done. Main thread.
class OnboardingView final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The application makes it.")
    Q_PROPERTY(QAbstractItemModel *steps READ steps CONSTANT)
    Q_PROPERTY(bool isAllDone READ isAllDone NOTIFY stepsChanged)
    Q_PROPERTY(bool isKeyless READ isKeyless NOTIFY stepsChanged)
    Q_PROPERTY(QString waitingText READ waitingText NOTIFY stepsChanged)
    Q_PROPERTY(QString doneText READ doneText NOTIFY stepsChanged)
    Q_PROPERTY(velmo::TriggerKeyCapture *triggerKey READ triggerKey CONSTANT)
    Q_PROPERTY(velmo::LanguageChoice *languages READ languages CONSTANT)
    Q_PROPERTY(QString speech READ speech NOTIFY speechChanged)
    Q_PROPERTY(bool isSpeechMissing READ isSpeechMissing NOTIFY speechChanged)
    Q_PROPERTY(velmo::SpeechTrial *trial READ trial CONSTANT)

public:
    /// Whom the view works with; all of them outlive it.
    struct Collaborators {
        MainQueue &queue;
        HotkeyListener &listener;
        TriggerKeyCapture &triggerKey;
        const AccessibilityPermission &accessibility;
        MicrophonePermission &microphone;
        MicrophonePresence &microphonePresence;
        SystemSettings &systemSettings;
        Preferences &preferences;
        PreferenceWatch &watch;
        ServiceWatch &service;
        SpeechTrial &trial;
    };

    explicit OnboardingView(const Collaborators &collaborators);

    [[nodiscard]] RowModel<OnboardingStep> *steps() { return &m_steps; }
    [[nodiscard]] bool isAllDone() const { return m_hasAccessibility && m_hasFnKey && m_hasMicrophone; }
    /// Keys cannot be watched in this session, and nothing done here changes that: the person may go on without.
    [[nodiscard]] bool isKeyless() const { return !m_hasAccessibility; }
    /// What is waited for; empty when all is done.
    [[nodiscard]] QString waitingText() const;
    /// How to dictate from now on.
    [[nodiscard]] QString doneText() const;
    [[nodiscard]] TriggerKeyCapture *triggerKey() { return &m_with.triggerKey; }

    [[nodiscard]] LanguageChoice *languages() { return &m_languages; }
    /// What recognises the primary language, or why nothing does, as styled text.
    [[nodiscard]] QString speech() const;
    /// Whether that needs something done.
    [[nodiscard]] bool isSpeechMissing() const;
    [[nodiscard]] SpeechTrial *trial() { return &m_with.trial; }

    /// The window appears: looks, now and from now on.
    void start();
    /// The window goes.
    void stop();

    /// The current step's button.
    Q_INVOKABLE void act();
    /// The person is ready.
    Q_INVOKABLE void done();

Q_SIGNALS:
    void stepsChanged();
    void speechChanged();
    /// Nothing is missing any more, or the person goes on without.
    void completed();
    /// The person is ready.
    void closed();

private:
    void poll();
    void look();
    void read();
    void requestMicrophone();
    void update();
    [[nodiscard]] OnboardingStep accessibilityStep() const;
    [[nodiscard]] OnboardingStep keyStep() const;
    [[nodiscard]] OnboardingStep microphoneStep() const;

    Collaborators m_with;
    LanguageChoice m_languages;
    bool m_hasAccessibility = false;
    bool m_hasFnKey = false;
    bool m_hasMicrophone = false;
    bool m_isMicrophonePresent = true; ///< As long as nothing else is known.
    bool m_micRequested = false;
    RowModel<OnboardingStep> m_steps;
    MainQueue::Timer m_timer;
    MainQueue::Timer m_completion;
    std::unique_ptr<ServiceWatch::Look> m_look;
    Lifetime m_lifetime;
};

} // namespace velmo
