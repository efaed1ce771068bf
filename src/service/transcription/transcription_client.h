#pragma once

#include "service/transcription/transcription.h"
#include "service/wire/service_request.h"

#include <QThreadPool>
#include <memory>

namespace velmo {

class HttpClient;
class LiveUpload;

/// Turns recordings into text by uploading them to the service. An upload ends after 30 s without progress or
/// 35 s in all, counted from the end of the recording; it is never repeated, but a live one that broke without an answer is
/// followed by one in the usual way. Local checks run on the main thread; token, device identifier and body are got ready
/// on a worker, results come on the HTTP client's thread. Main thread.
class TranscriptionClient final : public Transcriber {
public:
    /// The parts outlive the client. Only tests have limits of their own.
    TranscriptionClient(ServiceOrigin origin, HttpClient &http, TokenSource &tokens, Preferences &preferences,
                        std::optional<HttpLimits> limits = {});
    /// Waits until uploads being got ready are under way; their completions come from the HTTP client.
    ~TranscriptionClient() override;

    [[nodiscard]] const QString &baseURL() const { return m_origin.baseURL(); }

    /// Begins to read the token and opens a connection; a service on this machine gets its model ready by it.
    void prepare() override;

    void follow(const QString &path, const TranscriptionSettings &settings, Heard heard) override;
    void abandon() override;

    void transcribe(const QString &path, const TranscriptionSettings &settings,
                    Completion completion) override;

private:
    const ServiceOrigin m_origin;
    HttpClient &m_http;
    TokenSource &m_tokens;
    Preferences &m_preferences;
    const std::optional<HttpLimits> m_limits;
    std::shared_ptr<LiveUpload> m_live; ///< Of the recording that is followed.
    QThreadPool m_worker;               // last: its end waits for tasks that use the rest
};

} // namespace velmo
