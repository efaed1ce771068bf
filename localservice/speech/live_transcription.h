#pragma once

#include "localservice/http/endpoint.h"
#include "localservice/speech/live_recordings.h"
#include "localservice/speech/speech_recognition.h"
#include "localservice/speech/speech_session.h"

#include <QByteArray>
#include <memory>
#include <optional>

namespace velmo::localservice {

/// An upload whose recording is still being made: recognised while it comes, so that after its end little is left to do. The
/// recording is a WAVE file as Velmo writes it (one channel, 16 kHz, 16 bits), whose header does not know its length yet.
class LiveTranscription final : public BodyTaker {
public:
    /// The recognition outlives it; the recordings, where it is found while it comes, too.
    LiveTranscription(SpeechRecognition &speech, LiveRecordings &recordings, const Request &request);

    [[nodiscard]] bool take(QByteArrayView bytes) override;
    [[nodiscard]] Reply finish() override;

private:
    void begin();
    void begin(qsizetype audio);
    void appendSound();
    void refuse(const Refusal &refusal) { m_refusal = refusal; }

    SpeechRecognition &m_speech;
    LiveRecordings &m_recordings;
    const QByteArray m_contentType;
    const QByteArray m_end; ///< What stands behind the recording.
    const std::function<bool()> m_isAbandoned;
    QByteArray
        m_held; ///< What has come and is not dealt with: of the end it is only known at the end that it is none of the sound.
    std::shared_ptr<Patience> m_patience = std::make_shared<Patience>();
    std::shared_ptr<SpeechSession> m_session; ///< From when the recording has begun.
    qsizetype m_samples = 0;
    std::optional<Refusal> m_refusal;
};

} // namespace velmo::localservice
