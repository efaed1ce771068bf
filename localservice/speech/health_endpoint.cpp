#include "localservice/speech/endpoints.h"

using namespace Qt::StringLiterals;

namespace velmo::localservice {

Endpoint healthEndpoint(const SpeechRecognition &speech) {
    return {"GET", "/health", [&speech](const Request &) {
                if (!speech.isReady())
                    return refusalReply({503, u"The speech engine is still loading."_s});
                return Reply{200, {{u"status"_s, u"ok"_s}}};
            }};
}

Endpoint rootEndpoint(SpeechRecognition &speech) {
    return {"GET", "/", [&speech](const Request &) {
                speech.warm({});
                return Reply{200, {{u"service"_s, u"velmo-local-service"_s}}};
            }};
}

} // namespace velmo::localservice
