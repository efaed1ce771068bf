#pragma once

#include "base/interface.h"
#include "service/http/http_client.h"
#include "service/transcription/growing_recording.h"
#include "service/transcription/transcription.h"
#include "service/wire/service_request.h"

#include <functional>
#include <memory>
#include <mutex>
#include <optional>

namespace velmo {

/// The upload of one recording while it is made. It begins where the service is on this machine and says in its
/// "/health" that it takes that; whatever else happens, the recording is there to be uploaded in the usual way. Any
/// thread.
class LiveUpload : public std::enable_shared_from_this<LiveUpload>, private Unmovable {
public:
    /// How the upload ended after the recording did; called once, on the HTTP client's thread.
    struct Ending {
        std::function<void(const HttpOutcome &outcome)> answered; ///< This is what became of the dictation.
        /// The service has not answered: the recording is still to be uploaded, by this sender.
        std::function<void(const RequestSender &sender)> broken;
    };

    /// The client outlives all uploads. Limits other than those of every upload are for tests.
    LiveUpload(ServiceOrigin origin, HttpClient &http, std::optional<HttpLimits> limits,
               TranscriptionSettings settings, QString path, Transcriber::Heard heard)
        : m_origin(std::move(origin)),
          m_http(http),
          m_limits(limits),
          m_settings(std::move(settings)),
          m_path(std::move(path)),
          m_heard(std::move(heard)) {}

    /// Asks the service whether it takes this, and begins. Once; the recording has been begun.
    void begin(const RequestSender &sender);

    /// How many bytes are sent in all of a recording of that size, if it is this one that is being sent, with these
    /// settings.
    [[nodiscard]] std::optional<qint64> sizeIfSending(const QFile &recording,
                                                      const TranscriptionSettings &settings);

    /// The recording is complete, and the rest of it goes out.
    /// @return whether one of the endings will come; if not, the upload has broken before.
    [[nodiscard]] bool finish(Ending ending);

    /// Ends the upload; nothing comes of it. Does nothing once it has been finished.
    void abandon();

private:
    enum class State { Asking, Sending, Finished, Over };

    void send();
    void ended(const HttpOutcome &outcome);
    void askForWords();
    void wordsCame(const HttpOutcome &outcome);

    const ServiceOrigin m_origin;
    HttpClient &m_http;
    const std::optional<HttpLimits> m_limits;
    const TranscriptionSettings m_settings;
    const QString m_path;
    const Transcriber::Heard m_heard; ///< May be null.

    std::mutex m_mutex; // of what follows
    State m_state = State::Asking;
    RequestSender m_sender;
    std::shared_ptr<GrowingRecording> m_body; ///< Since it is sent.
    Ending m_ending;

    // Of the HTTP client's thread.
    QByteArray m_boundary; ///< By which the service knows the upload.
    QString m_words;       ///< Told last.
    std::chrono::steady_clock::time_point m_asked;
};

} // namespace velmo
