#include "localservice/speech/endpoints.h"

#include <QJsonArray>

using namespace Qt::StringLiterals;

namespace velmo::localservice {

Endpoint healthEndpoint(const SpeechRecognition &speech) {
    return {"GET", "/health", [&speech](const Request &) {
                if (!speech.isReady())
                    return refusalReply({503, u"The speech engine is still loading."_s});
                const SpeechFacts facts = speech.facts();
                return Reply{200,
                             {{u"status"_s, u"ok"_s},
                              {u"liveUpload"_s, speech.takesGrowingRecordings()},
                              {u"engine"_s, facts.engine},
                              {u"model"_s, facts.model},
                              {u"languages"_s, QJsonArray::fromStringList(facts.languages)}}};
            }};
}

Endpoint rootEndpoint(SpeechRecognition &speech) {
    return {"GET", "/", [&speech](const Request &) {
                speech.warm({});
                return Reply{200, {{u"service"_s, u"velmo-local-service"_s}}};
            }};
}

} // namespace velmo::localservice
