#include "localservice/speech/transcript_reply.h"

using namespace Qt::StringLiterals;

namespace velmo::localservice {

std::optional<QString> faultInHeaders(const Request &request) {
    for (const char *name : {"X-Device-Id", "X-Mode", "X-App-Version", "X-Source"}) {
        if (request.header(name).value_or(QByteArray()).isEmpty())
            return u"The header %1 is missing."_s.arg(QLatin1StringView(name));
    }
    if (request.header("X-Source") != "mac")
        return u"The header X-Source is not \"mac\"."_s;
    return std::nullopt;
}

Reply transcriptReply(const SpeechOutcome &outcome) {
    if (!outcome)
        return refusalReply(outcome.error());
    QJsonObject body{{u"text"_s, outcome->text}};
    if (outcome->detectedLanguage)
        body.insert(u"detectedLanguage"_s, *outcome->detectedLanguage);
    return {200, body};
}

} // namespace velmo::localservice
