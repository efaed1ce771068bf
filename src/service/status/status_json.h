#pragma once

#include "service/status/service_status.h"

#include <QJsonObject>

namespace velmo {

// The replies read as they are meant: members that are absent or of another kind count as nothing said.

[[nodiscard]] ServiceHealth healthFrom(const QJsonObject &reply);
[[nodiscard]] SpeechModels speechModelsFrom(const QJsonObject &reply);
[[nodiscard]] LanguageModels languageModelsFrom(const QJsonObject &reply);

/// The body that asks for the wish.
[[nodiscard]] QJsonObject wishFor(ModelWish wish, const QString &model);
/// Empty where there is no address.
[[nodiscard]] QJsonObject objectOf(const LanguageModel &model);

} // namespace velmo
