#include "localservice/speech/endpoints.h"

#include <array>

using namespace Qt::StringLiterals;

namespace velmo::localservice {

namespace {

/// The header at fault among those Velmo sends with every upload, in a sentence.
std::optional<QString> faultInHeaders(const Request &request) {
    for (const char *name : {"X-Device-Id", "X-Mode", "X-App-Version", "X-Source"}) {
        if (request.header(name).value_or(QByteArray()).isEmpty())
            return u"The header %1 is missing."_s.arg(QLatin1StringView(name));
    }
    if (request.header("X-Source") != "mac")
        return u"The header X-Source is not \"mac\"."_s;
    return std::nullopt;
}

Reply transcriptReply(const Transcript &transcript) {
    QJsonObject body{{u"text"_s, transcript.text}};
    if (transcript.detectedLanguage)
        body.insert(u"detectedLanguage"_s, *transcript.detectedLanguage);
    return {200, body};
}

Reply transcribe(SpeechRecognition &speech, const Request &request) {
    if (const auto wrong = faultInHeaders(request))
        return refusalReply({400, *wrong});
    auto upload = parseUpload(request.header("Content-Type").value_or(QByteArray()), request.body);
    if (!upload)
        return refusalReply({400, upload.error()});
    const auto outcome = speech.transcribe(std::move(*upload), request.isAbandoned);
    return outcome ? transcriptReply(*outcome) : refusalReply(outcome.error());
}

} // namespace

Endpoint transcribeEndpoint(SpeechRecognition &speech) {
    return {"POST", "/api/transcribe",
            [&speech](const Request &request) { return transcribe(speech, request); }};
}

} // namespace velmo::localservice
