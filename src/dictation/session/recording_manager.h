#pragma once

#include "base/lifetime.h"
#include "base/main_queue.h"
#include "dictation/dictation_state.h"
#include "dictation/session/hint_prompt.h"
#include "service/transcription/transcription.h"

#include <QObject>
#include <QString>
#include <functional>
#include <optional>

namespace velmo {

class Account;
class DictationHistory;
class LevelMonitor;
class MicrophonePermission;
class OverlayDisplay;
class Preferences;
class Recorder;
class SoundPlayer;
class StatisticsReporter;
class TextInsertion;
class TextProcessing;
class Workspace;
struct ProcessedText;

/// Drives one dictation from the wish to start until the text stands at the cursor: records, has the recording
/// transcribed, cleans the text, refuses what nobody said, inserts, remembers and counts.
///
/// All operations and all published fields belong to the main thread. State changes are tasks of the main queue, so
/// they apply one turn after the step that asked for them, in order: a second start in the same turn still sees
/// `idle`. Answers may come on any thread and are dealt with on the main thread. A deferred step does nothing once the
/// manager is gone.
class RecordingManager final : public QObject {
    Q_OBJECT
    Q_PROPERTY(velmo::State state READ state NOTIFY stateChanged)
    Q_PROPERTY(QString lastTranscription READ lastTranscription NOTIFY lastTranscriptionChanged)
    Q_PROPERTY(QString errorMessage READ errorMessage NOTIFY errorMessageChanged)
    Q_PROPERTY(QString liveText READ liveText NOTIFY liveTextChanged)
    Q_PROPERTY(QString notice READ notice NOTIFY noticeChanged)
    Q_PROPERTY(QString activeAppName READ activeAppName NOTIFY activeAppNameChanged)

public:
    /// Whom the manager works with; all of them outlive it.
    struct Collaborators {
        MainQueue &queue;
        Preferences &preferences;
        MicrophonePermission &microphone;
        Workspace &workspace;
        SoundPlayer &sounds;
        Recorder &recorder;
        Transcriber &transcriptionClient;
        TextProcessing &textProcessor;
        TextInsertion &textInserter;
        LevelMonitor &levelMeter;
        OverlayDisplay &overlay;
        DictationHistory &history;
        Account &account;
        StatisticsReporter &statistics;
    };

    explicit RecordingManager(const Collaborators &collaborators);

    /// Begins a dictation if none runs. Asks for the microphone first where that has not been done.
    void startRecording();
    /// Ends the recording and has it typed. Does nothing unless a recording runs.
    void stopRecording();
    /// Ends the recording and throws it away. Does nothing unless a recording runs.
    void cancelRecording();

    [[nodiscard]] State state() const { return m_state; }
    /// The text inserted last; null when there is none or when output was refused since.
    [[nodiscard]] const QString &lastTranscription() const { return m_lastTranscription; }
    /// A sentence to show; null when there is none.
    [[nodiscard]] const QString &errorMessage() const { return m_errorMessage; }
    /// What the service has heard of the recording so far; empty when nothing is known, and when no dictation runs. Shown,
    /// never inserted.
    [[nodiscard]] const QString &liveText() const { return m_liveText; }
    /// What is to be known of the last text, though nothing failed; null when there is nothing, and once the next begins.
    [[nodiscard]] const QString &notice() const { return m_notice; }
    /// The application that had focus when the last recording began.
    [[nodiscard]] const QString &activeAppName() const { return m_activeAppName; }

    /// Called after each state change, before the overlay hears of it.
    std::function<void(State)> onStateChange;

Q_SIGNALS:
    void stateChanged();
    void lastTranscriptionChanged();
    void errorMessageChanged();
    void liveTextChanged();
    void noticeChanged();
    void activeAppNameChanged();
    /// A start that was asked for led to no recording, and none runs.
    void startFailed();

private:
    /// What the later steps of one dictation know about it.
    struct Dictation {
        QString recording; ///< Path of the file.
        std::optional<QString> prompt;
        double durationSeconds = 0;
        Date stopTime; ///< When the recorder had stopped; latency figures count from here.
    };

    void beginRecording(bool granted);
    void failStart(const QString &message);
    void recordingStarted(const QString &path);
    void keepServiceWarm();
    void followRecording(const QString &path);
    [[nodiscard]] double secondsRecorded() const;
    template <class Handler>
    [[nodiscard]] auto whenAnswered(Handler handle);
    [[nodiscard]] TranscriptionSettings buildTranscriptionSettings() const;
    void transcribe(Dictation dictation);
    void handleTranscriptionResult(const Dictation &dictation, const TranscriptionResult &result);
    void process(const Dictation &dictation, const QString &text, const std::optional<QString> &language);
    void finishDictation(const Dictation &dictation, const ProcessedText &processed);
    void deliver(const Dictation &dictation, const QString &text);
    void rejectPhantom();

    void setState(State state);
    void applyState(State state);
    void setErrorMessage(const QString &message);
    void setLiveText(const QString &text);
    void setNotice(const QString &notice);
    void setLastTranscription(const QString &text);
    void setActiveAppName(const QString &name);
    [[nodiscard]] QString sinceStop(const Dictation &dictation) const;

    Collaborators m_with;
    HintPrompt m_hintPrompt;
    State m_state = State::idle;
    QString m_lastTranscription;
    QString m_errorMessage;
    QString m_recordingPath; ///< Of the recording that is followed.
    QString m_liveText;
    QString m_notice;
    QString m_activeAppName;
    std::optional<Date> m_recordingStartTime;
    MainQueue::Timer m_phantomMessageTimer;
    MainQueue::Timer m_warmTimer;
    Lifetime m_lifetime;
};

} // namespace velmo
