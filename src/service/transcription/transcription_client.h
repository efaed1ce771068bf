#pragma once

#include "service/transcription/transcription.h"
#include "service/wire/service_request.h"

#include <QThreadPool>

class QFile;

namespace velmo {

class HttpClient;

/// Turns recordings into text by uploading them to the service. An upload ends after 30 s without progress or
/// 35 s in all; it is never repeated. Local checks run on the caller's thread; token, device identifier and
/// body are got ready on a worker, results come on the HTTP client's thread. No state is kept between uploads.
class TranscriptionClient final : public Transcriber {
public:
    /// The parts outlive the client. Only tests have limits of their own.
    TranscriptionClient(ServiceOrigin origin, HttpClient &http, TokenSource &tokens, Preferences &preferences,
                        std::optional<HttpLimits> limits = {});
    /// Waits until uploads being got ready are under way; their completions come from the HTTP client.
    ~TranscriptionClient() override = default;

    [[nodiscard]] const QString &baseURL() const { return m_origin.baseURL(); }

    /// Begins to read the token and, unless the service is on this machine where it costs nothing, opens a
    /// connection. Main thread.
    void prepare() override;

    void transcribe(const QString &path, const TranscriptionSettings &settings,
                    Completion completion) override;

private:
    void upload(QFile &file, const TranscriptionSettings &settings, const Completion &completion);

    const ServiceOrigin m_origin;
    HttpClient &m_http;
    TokenSource &m_tokens;
    Preferences &m_preferences;
    const std::optional<HttpLimits> m_limits;
    QThreadPool m_worker; // last: its end waits for tasks that use the rest
};

} // namespace velmo
