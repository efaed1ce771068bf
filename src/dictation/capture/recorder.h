#pragma once

#include "base/interface.h"
#include "base/result.h"

#include <QString>
#include <chrono>
#include <functional>
#include <optional>

// What the recorder of the microphone is to a dictation, to the trigger key and to the level meter.
namespace velmo {

/// Why a recording could not begin, as a sentence for the person.
struct RecordingFailure {
    QString description;
};

/// Records the microphone into files. Start and stop on the main thread.
class Recorder : public Interface {
public:
    /// Begins a new file and answers its path.
    [[nodiscard]] virtual Result<QString, RecordingFailure> startRecording() = 0;

    /// Ends the recording and answers the path of its complete file; nothing when none was running.
    [[nodiscard]] virtual std::optional<QString> stopRecording() = 0;

    /// Removes a recording that is done with; a file that cannot be removed is left in silence. Any thread.
    virtual void deleteRecording(const QString &path) = 0;

    /// Called while a recording runs when the microphone is gone and no other took its place. What was heard is in
    /// the file; whoever started the recording now stops it.
    std::function<void()> onMicrophoneLost;
};

/// Listens ahead of a recording. People speak while they press the trigger, and whether the press is a gesture is
/// only known later; so the press opens the microphone, in memory alone, and a recording that begins starts with
/// what was heard since the latest press. Nothing is written, and nothing kept, of a press that turns out to be no
/// gesture. Main thread; returns at once; a microphone that cannot be opened is silently not listened to, because
/// starting the recording tries again and says why.
///
///     press, held 0.3 s                  press(t1), then Recorder::startRecording()
///     press, release, press, release     press(t1), press(t2), then Recorder::startRecording(): heard since t2
///     press, release, nothing more       press(t1), then drop() when a second press would come too late
///     press, another key                 press(t1), then drop()
class ArmedCapture : public Interface {
public:
    /// The trigger went down at that moment of `MainQueue::uptime()`. Opens the microphone, or goes on listening
    /// when an earlier press opened it. Does nothing while a recording runs.
    virtual void press(std::chrono::nanoseconds at) = 0;

    /// The press was nothing: closes the microphone and forgets what was heard. Leaves a running recording alone;
    /// may be called when nothing was pressed.
    virtual void drop() = 0;
};

/// Where the level meter gets its input levels from. Main thread.
class AudioLevelSource : private Unmovable {
public:
    /// Called with the level, 0 to 1, of each captured block. Set by whoever shows levels; emptied when the
    /// recording stops.
    std::function<void(float level)> onAudioLevel;

protected:
    ~AudioLevelSource() = default;
};

} // namespace velmo
