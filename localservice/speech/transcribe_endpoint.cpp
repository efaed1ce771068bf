#include "localservice/speech/endpoints.h"

#include "localservice/speech/live_transcription.h"
#include "localservice/speech/transcript_reply.h"

using namespace Qt::StringLiterals;

namespace velmo::localservice {

namespace {

Reply transcribe(SpeechRecognition &speech, const Request &request) {
    if (const auto wrong = faultInHeaders(request))
        return refusalReply({400, *wrong});
    auto upload = parseUpload(request.header("Content-Type").value_or(QByteArray()), request.body);
    if (!upload)
        return refusalReply({400, upload.error()});
    return transcriptReply(speech.transcribe(std::move(*upload), request.isAbandoned));
}

} // namespace

Endpoint transcribeEndpoint(SpeechRecognition &speech, LiveRecordings &recordings) {
    return {"POST", "/api/transcribe",
            [&speech](const Request &request) { return transcribe(speech, request); },
            [&speech, &recordings](const Request &request) {
                return std::make_unique<LiveTranscription>(speech, recordings, request);
            },
            std::chrono::seconds(static_cast<int>(kLongestSoundSeconds))};
}

} // namespace velmo::localservice
