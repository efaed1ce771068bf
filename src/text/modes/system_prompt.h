#pragma once

#include <QStringList>

namespace velmo {

/// "sv" → "Swedish", "no" → "Norwegian (Bokmål)"; any other code stays as it is.
[[nodiscard]] QString languageDisplayName(const QString &code);

/// Asks the model to keep the words of the dictionary; empty when there are none.
[[nodiscard]] QString vocabularyInstruction(const QStringList &dictionaryWords);

/// All that a mode tells the model: the preamble, the mode's own prompt, the language, the vocabulary instruction and
/// the one on spoken emoji.
[[nodiscard]] QString buildSystemPrompt(const QString &modePrompt, const QString &language,
                                        const QString &vocabularyInstruction);

} // namespace velmo
