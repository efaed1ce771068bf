#include "localservice/http/json_request.h"
#include "localservice/models/endpoints.h"
#include "localservice/models/model_downloads.h"
#include "store/languages.h"

#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace velmo::localservice {

namespace {

/// "99 languages", "Norwegian, Nynorsk, English"; empty for a model that nobody has told of.
QString languagesOf(const std::optional<CatalogueModel> &known) {
    if (!known)
        return {};
    if (known->languages == velmoLanguages())
        return u"99 languages"_s;
    QStringList names;
    for (const QString &code : known->languages)
        names.append(languageName(code));
    return names.join(u", "_s);
}

QJsonObject objectOf(const QString &name, qint64 bytes, bool isInstalled, bool isInUse) {
    const auto known = catalogueModel(name);
    QJsonObject object{{u"name"_s, name},
                       {u"bytes"_s, bytes},
                       {u"languages"_s, languagesOf(known)},
                       {u"installed"_s, isInstalled},
                       {u"inUse"_s, isInUse},
                       {u"source"_s, known ? known->publisher : QString()}};
    if (known && !known->canBeDownloaded())
        object.insert(u"page"_s, known->source);
    return object;
}

QJsonArray modelsOf(const ModelStore &store) {
    const auto used = store.modelFor({});
    QJsonArray models;
    for (const InstalledModel &model : store.installed())
        models.append(
            objectOf(model.name, QFileInfo(model.path).size(), true, used && used->name == model.name));
    for (const CatalogueModel &model : modelCatalogue()) {
        if (!store.find(model.name))
            models.append(objectOf(model.name, model.size, false, false));
    }
    return models;
}

Reply answer(const ModelStore &store, const ModelDownloads &downloads) {
    QJsonObject body{{u"models"_s, modelsOf(store)}, {u"download"_s, QJsonValue()}};
    if (const auto running = downloads.running())
        body.insert(u"download"_s, QJsonObject{{u"name"_s, running->name},
                                               {u"received"_s, running->progress.received},
                                               {u"bytes"_s, running->progress.total},
                                               {u"bytesPerSecond"_s, running->bytesPerSecond}});
    if (const QString failure = downloads.failure(); !failure.isEmpty())
        body.insert(u"failure"_s, failure);
    return {200, body};
}

Result<void, Refusal> use(const ModelStore &store, const QString &name) {
    if (!store.find(name))
        return failed(Refusal{404, u"There is no model \"%1\" here."_s.arg(name)});
    return store.use(name, {}).map_error([](const QString &sentence) { return Refusal{500, sentence}; });
}

Result<void, Refusal> carryOut(const QJsonObject &wish, const ModelStore &store, ModelDownloads &downloads) {
    if (wish.contains("get"_L1))
        return downloads.get(wish["get"_L1].toString());
    if (wish.contains("use"_L1))
        return use(store, wish["use"_L1].toString());
    if (!wish.contains("cancel"_L1))
        return failed(Refusal{400, u"The body has none of \"get\", \"cancel\" and \"use\"."_s});
    downloads.cancel();
    return {};
}

} // namespace

std::vector<Endpoint> modelEndpoints(const ModelStore &store, ModelDownloads &downloads) {
    return {polled({"GET", "/api/models",
                    [store, &downloads](const Request &) { return answer(store, downloads); }}),
            {"POST", "/api/models", [store, &downloads](const Request &request) {
                 const auto done = jsonObjectOf(request).and_then(
                     [&](const QJsonObject &wish) { return carryOut(wish, store, downloads); });
                 return done ? answer(store, downloads) : refusalReply(done.error());
             }}};
}

} // namespace velmo::localservice
