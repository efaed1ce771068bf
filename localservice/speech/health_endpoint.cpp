#include "localservice/speech/endpoints.h"

#include <QDateTime>
#include <QJsonArray>

using namespace Qt::StringLiterals;

namespace velmo::localservice {

namespace {

QJsonObject health(const SpeechRecognition &speech, const QString &since, const QString &languageModel) {
    const SpeechFacts facts = speech.facts();
    QJsonObject body{{u"status"_s, u"ok"_s},
                     {u"liveUpload"_s, speech.takesGrowingRecordings()},
                     {u"since"_s, since},
                     {u"engine"_s, facts.engine}};
    if (!facts.model.isEmpty())
        body.insert(u"model"_s, facts.model);
    if (!facts.languages.isEmpty())
        body.insert(u"languages"_s, QJsonArray::fromStringList(facts.languages));
    if (!languageModel.isEmpty())
        body.insert(u"languageModel"_s, languageModel);
    return body;
}

} // namespace

Endpoint healthEndpoint(const SpeechRecognition &speech, std::function<QString()> languageModel) {
    const QString since = QDateTime::currentDateTimeUtc().toString(Qt::ISODate);
    return polled(
        {"GET", "/health", [&speech, since, languageModel = std::move(languageModel)](const Request &) {
             if (!speech.isReady())
                 return refusalReply({503, u"The speech engine is still loading."_s});
             return Reply{200, health(speech, since, languageModel ? languageModel() : QString())};
         }});
}

Endpoint rootEndpoint(SpeechRecognition &speech) {
    return polled({"GET", "/", [&speech](const Request &) {
                       speech.warm({});
                       return Reply{200, {{u"service"_s, u"velmo-local-service"_s}}};
                   }});
}

} // namespace velmo::localservice
