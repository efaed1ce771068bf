#pragma once

#include "base/result.h"
#include "store/preferences.h"

#include <QByteArray>
#include <map>
#include <optional>

namespace velmo {

/// One line of `velmo clean --jsonl`.
struct CleanRequest {
    std::optional<std::map<QString, PreferenceValue>> preferences; ///< Absent: the stored ones.
    std::optional<QString> detectedLanguage;
    QString text;
};

/// Reads {"prefs","detected","text"}. A string is a String, true and false are a Bool, a whole number is an
/// Integer; other members are ignored. Bytes that are no UTF-8 read as U+FFFD. The failure is a sentence that
/// names what is off.
[[nodiscard]] Result<CleanRequest, QString> parseCleanRequest(const QByteArray &line);

} // namespace velmo
