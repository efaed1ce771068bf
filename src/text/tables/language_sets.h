#pragma once

#include <QStringView>

/// Groups of language codes. Codes are compared as written; the detected one is lower-cased before.
namespace velmo {

/// Norwegian, Danish, Swedish.
[[nodiscard]] bool isScandinavian(QStringView code);

/// Norwegian, and its two written forms.
[[nodiscard]] bool isNorwegian(QStringView code);

/// Languages that Norwegian speech is detected as: Norwegian itself and, often, Swedish.
[[nodiscard]] bool mayBeNorwegian(QStringView code);

} // namespace velmo
