#pragma once

#include "base/lifetime.h"
#include "base/result.h"
#include "dictation/dictation_state.h"

#include <QObject>
#include <QString>
#include <functional>
#include <vector>

namespace velmo {

class ArmedCapture;
class HotkeyListener;
class PreferenceWatch;
class Recorder;
class RecordingManager;
class SessionLock;

/// What begins and ends dictations, joined. However a recording begins, the trigger key and the hot key stop it; however
/// it ends or fails to begin, the next press works at once.
///
///     trigger key pressed           listens ahead, until the press turns out to be nothing
///     gesture, hot key              a recording begins, or ends
///     mouse, start()                a recording begins; to the listener it is a hands-free one
///     session locked                keys begin nothing, and the microphone does not stay open: a recording ends
///     microphone lost               the recording ends with what was heard
///     another trigger key chosen    is watched from then on, whichever process chose it
///
/// Works from its construction on; the keys are watched between `startListening` and `stopListening`. Main thread.
class DictationControls final : public QObject {
    Q_OBJECT

public:
    /// What is joined; all of them outlive the controls.
    struct Collaborators {
        HotkeyListener &hotkeyListener;
        RecordingManager &recordingManager;
        Recorder &recorder;
        ArmedCapture &armedCapture; ///< The same recorder, ahead of a recording.
        SessionLock &sessionLock;
        PreferenceWatch &preferenceWatch;
    };

    explicit DictationControls(const Collaborators &collaborators);

    /// Takes the trigger key and the fallback hot key.
    void startListening();
    /// Gives all keys back.
    void stopListening();

    /// How a wish was met; the failure is a sentence for the person.
    using Outcome = Result<void, QString>;
    using Answer = std::function<void(const Outcome &outcome)>;

    /// Begins a recording. Answers once it is known whether it runs.
    void start(Answer answer);
    /// Does what the hot key does. Answers as `start` where that begins a recording.
    void toggle(const Answer &answer);
    /// Ends the recording and has it typed.
    [[nodiscard]] Outcome stop();
    /// Ends the recording and throws it away.
    [[nodiscard]] Outcome cancel();
    [[nodiscard]] State state() const;

private:
    void connectListener();
    void connectManager();
    void heedLock();
    void followTriggerKey();
    void begin(Answer answer, const std::function<void()> &startRecording);
    void answerStarts(const Outcome &outcome);

    Collaborators m_with;
    std::vector<Answer> m_starts; ///< Who waits to hear whether the recording runs.
    Lifetime m_lifetime;
};

} // namespace velmo
