#include "service/status/status_json.h"

#include "base/json.h"

#include <QDateTime>

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

/// Null where there is none.
QString text(const QJsonObject &object, QLatin1StringView member) {
    return json::string(object, member).value_or(QString());
}

/// 2^53 is far beyond every file.
qint64 count(const QJsonObject &object, QLatin1StringView member) {
    return static_cast<qint64>(object[member].toDouble());
}

QStringList texts(const QJsonValue &array) {
    QStringList texts;
    for (const QJsonValueConstRef value : array.toArray()) {
        if (value.isString())
            texts.append(value.toString());
    }
    return texts;
}

template <class Value>
QList<Value> listOf(const QJsonValue &array, Value (*read)(const QJsonObject &)) {
    QList<Value> list;
    for (const QJsonValueConstRef value : array.toArray()) {
        if (value.isObject())
            list.append(read(value.toObject()));
    }
    return list;
}

std::optional<Date> moment(const QString &text) {
    const QDateTime time = QDateTime::fromString(text, Qt::ISODate);
    if (!time.isValid())
        return std::nullopt;
    return Date(std::chrono::milliseconds(time.toMSecsSinceEpoch()));
}

SpeechModel modelFrom(const QJsonObject &object) {
    return {text(object, "name"_L1),         count(object, "bytes"_L1),   text(object, "languages"_L1),
            object["installed"_L1].toBool(), object["inUse"_L1].toBool(), text(object, "source"_L1),
            text(object, "page"_L1)};
}

LanguageModelHost hostFrom(const QJsonObject &object) {
    return {text(object, "name"_L1), text(object, "address"_L1), texts(object["models"_L1])};
}

} // namespace

ServiceHealth healthFrom(const QJsonObject &reply) {
    ServiceHealth health;
    health.since = moment(text(reply, "since"_L1));
    health.engine = text(reply, "engine"_L1);
    health.model = text(reply, "model"_L1);
    if (reply["languages"_L1].isArray())
        health.languages = texts(reply["languages"_L1]);
    health.languageModel = text(reply, "languageModel"_L1);
    return health;
}

SpeechModels speechModelsFrom(const QJsonObject &reply) {
    SpeechModels models;
    models.models = listOf(reply["models"_L1], modelFrom);
    if (reply["download"_L1].isObject()) {
        const QJsonObject download = reply["download"_L1].toObject();
        models.download = {text(download, "name"_L1), count(download, "received"_L1),
                           count(download, "bytes"_L1), download["bytesPerSecond"_L1].toDouble()};
    }
    models.failure = text(reply, "failure"_L1);
    return models;
}

LanguageModels languageModelsFrom(const QJsonObject &reply) {
    return {{text(reply, "address"_L1), text(reply, "model"_L1)}, listOf(reply["found"_L1], hostFrom)};
}

QJsonObject wishFor(ModelWish wish, const QString &model) {
    switch (wish) {
    case ModelWish::Get:
        return {{u"get"_s, model}};
    case ModelWish::Cancel:
        return {{u"cancel"_s, model}};
    case ModelWish::Use:
        break;
    }
    return {{u"use"_s, model}};
}

QJsonObject objectOf(const LanguageModel &model) {
    QJsonObject object;
    if (!model.address.isEmpty()) {
        object.insert(u"address"_s, model.address);
        if (!model.model.isEmpty())
            object.insert(u"model"_s, model.model);
    }
    return object;
}

} // namespace velmo
