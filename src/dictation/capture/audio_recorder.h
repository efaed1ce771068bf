#pragma once

#include "base/lifetime.h"
#include "base/main_queue.h"
#include "dictation/capture/recorder.h"

#include <functional>
#include <memory>

namespace velmo {

class CaptureSession;
class Microphone;
class RecordingFiles;
class RecordingWriter;
struct CaptureFormat;
struct MicrophoneFailure;

/// The recorder's own errors.
enum class RecordingError {
    alreadyRecording,
    noMicrophoneAccess, ///< The permission is tested before a recording is started, so nothing raises it here.
};

/// The sentence for the person.
[[nodiscard]] QString localizedDescription(RecordingError error);

/// Records the default microphone, each time into a new file in the temporary directory: WAVE, 16-bit, 16 kHz, mono.
/// A recording begins with what was heard since the latest `press`, or with its start when nothing was pressed.
/// Main thread, but for `deleteRecording`; it writes on the capture thread.
class AudioRecorder final : public Recorder, public ArmedCapture, public AudioLevelSource {
public:
    struct Collaborators {
        MainQueue &queue;
        Microphone &microphone;
        RecordingFiles &files;
    };

    /// How long a start waits for the microphone to open. A sound server opens one within 10 to 30 ms, a sleeping
    /// device takes longer; a server that hangs must not take the application with it. A microphone that a press
    /// opened is not waited for at all.
    static constexpr std::chrono::milliseconds openingPatience{1000};

    /// The collaborators outlive the recorder.
    AudioRecorder(const Collaborators &collaborators, QString directory,
                  std::chrono::milliseconds patience = openingPatience);
    /// A running recording is stopped. It is removed, as is the last one, whose text may not have come.
    ~AudioRecorder() override;

    /// A failed start leaves nothing behind: no open microphone, no file.
    [[nodiscard]] Result<QString, RecordingFailure> startRecording() override;
    [[nodiscard]] std::optional<QString> stopRecording() override;
    void deleteRecording(const QString &path) override;

    void press(std::chrono::nanoseconds at) override;
    void drop() override;

    [[nodiscard]] bool isRecording() const { return m_isRecording; }

private:
    [[nodiscard]] std::unique_ptr<CaptureSession> openMicrophone();
    [[nodiscard]] std::unique_ptr<CaptureSession> takeOpenMicrophone();
    [[nodiscard]] Result<std::unique_ptr<RecordingWriter>, RecordingFailure>
    openFile(const QString &path, const CaptureFormat &format);
    void reportLevel(float level);
    void captureEnded(const MicrophoneFailure &failure);
    void microphoneLost(const QString &reason);
    void watchMicrophone();

    Collaborators m_with;
    QString m_directory;
    std::chrono::milliseconds m_patience;
    QString m_recordingUrl; ///< Path of the current or last recording.
    bool m_isRecording = false;
    MainQueue::Timer m_dropTimer;
    MainQueue::Timer m_watchTimer;
    Lifetime m_lifetime;
    std::unique_ptr<CaptureSession> m_session; ///< Armed or recording.
};

} // namespace velmo
