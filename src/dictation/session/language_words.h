#pragma once

#include <QSet>
#include <QString>
#include <QStringList>

namespace velmo {

/// Names, places, slang and brands that speech models tend to misspell, by language (da, nb and no, sv, fi, is, nn): a
/// product decision. They keep a dictionary word of a language the person does not dictate in out of the hints.
/// Words are in composed form (NFC) and are compared as written: case and accents count. Any thread.

/// Whether the word is listed for any language. The word must be in composed form.
[[nodiscard]] bool isListedWord(const QString &composedWord);

/// Whether the word is listed for one of the languages. Codes are looked up as written; one without a list has none.
[[nodiscard]] bool isListedWord(const QString &composedWord, const QStringList &languages);

} // namespace velmo
