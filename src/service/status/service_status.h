#pragma once

#include "base/main_queue.h"
#include "base/result.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <optional>

// What a service on this machine says of itself.
namespace velmo {

/// Why the service told nothing.
struct StatusFailure {
    bool isSilent;       ///< Nothing came back; otherwise it answered, but with a refusal or something else.
    QString description; ///< A sentence for the person.
};

template <class Value>
using StatusResult = Result<Value, StatusFailure>;

/// What recognises speech there, and since when.
struct ServiceHealth {
    std::optional<Date> since; ///< When the service began.
    QString
        engine; ///< "Whisper", "PocketSphinx", "server" (another one does the work); null where it does not say.
    QString model;                        ///< Null where the engine has none to choose.
    std::optional<QStringList> languages; ///< Codes of what it understands; absent where that is not known.
    QString languageModel;                ///< What modes go through, for people; null when there is none.

    bool operator==(const ServiceHealth &) const = default;
};

/// A model of the speech engine, here or to be had.
struct SpeechModel {
    QString name;
    qint64 bytes = 0;
    QString languages; ///< For people: "99 languages".
    bool isInstalled = false;
    bool isInUse = false;
    QString source;    ///< Where it comes from, for people.
    QString page = {}; ///< Where a person fetches it by hand; null for a model that is got on demand.

    bool operator==(const SpeechModel &) const = default;
};

/// A model on its way.
struct ModelDownload {
    QString name;
    qint64 received = 0;
    qint64 bytes = 0;
    double bytesPerSecond = 0;

    bool operator==(const ModelDownload &) const = default;
};

struct SpeechModels {
    QList<SpeechModel> models;
    std::optional<ModelDownload> download;
    QString failure; ///< Why the last download ended; null when there is nothing to say.

    bool operator==(const SpeechModels &) const = default;
};

/// What is asked of the models.
enum class ModelWish { Get, Cancel, Use };

/// A language model that rewrites texts, and where it is.
struct LanguageModel {
    QString address; ///< Null: none.
    QString model;   ///< Null: the first one there.

    bool operator==(const LanguageModel &) const = default;
};

/// A program on this machine that has language models.
struct LanguageModelHost {
    QString name;
    QString address;
    QStringList models;

    bool operator==(const LanguageModelHost &) const = default;
};

struct LanguageModels {
    LanguageModel chosen;
    QList<LanguageModelHost> found;

    bool operator==(const LanguageModels &) const = default;
};

} // namespace velmo
