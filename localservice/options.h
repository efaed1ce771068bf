#pragma once

#include "base/result.h"
#include "localservice/models/model_store.h"

#include <QString>
#include <QStringList>

namespace velmo::localservice {

/// What the service is started with.
struct Options {
    QString host = QStringLiteral("127.0.0.1"); ///< A numeric address.
    int port = 18650;                           ///< 0: any free one.
    QString
        model; ///< Of the embedded engine: a name, a file with a "/", "none"; empty: as told by `models use`.
    QString speechUrl; ///< Of POST /v1/audio/transcriptions; empty: the embedded engine.
    QString speechModel;
    bool detectLanguage = false; ///< The speech server listens for the language instead of being told it.
    QString chatUrl;             ///< Of POST /v1/chat/completions; empty: no language model.
    QString chatModel;           ///< Empty: the server's own choice.
    QString dataDirectory;       ///< Absolute; of the accounts.
    bool help = false;
    bool version = false;
};

/// Reads the words after the program's name; a sentence names the one that is off.
[[nodiscard]] Result<Options, QString> parseOptions(const QStringList &arguments);

/// The speech models of this person, and of the folders that VELMO_MODELS_PATH names.
[[nodiscard]] ModelStore modelStore();

/// What --help prints.
[[nodiscard]] QString helpText();

} // namespace velmo::localservice
