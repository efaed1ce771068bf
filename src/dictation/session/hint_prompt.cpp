#include "dictation/session/hint_prompt.h"

#include "base/canonical_form.h"
#include "base/characters.h"
#include "base/log.h"
#include "dictation/session/language_words.h"
#include "store/dictionary_words.h"
#include "store/preference_keys.h"

#include <algorithm>
#include <vector>

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

constexpr std::size_t kFewestWords = 3;

struct Word {
    QString spelling;
    QString composed;
};
using WordList = std::vector<Word>;

/// In order; of canonically equal spellings the first stays.
void sortWithoutDuplicates(WordList &words) {
    std::stable_sort(words.begin(), words.end(), [](const Word &left, const Word &right) {
        return precedesByCodePoints(left.composed, right.composed);
    });
    const auto areEqual = [](const Word &left, const Word &right) { return left.composed == right.composed; };
    words.erase(std::unique(words.begin(), words.end(), areEqual), words.end());
}

QString joined(const WordList &words) {
    QString text;
    for (const Word &word : words) {
        if (!text.isNull())
            text += QLatin1String(", ");
        text += word.spelling;
    }
    return text;
}

bool isForeign(const QString &composedWord, const QStringList &languages) {
    return isListedWord(composedWord) && !isListedWord(composedWord, languages);
}

} // namespace

std::optional<QString> HintPrompt::current(const QStringList &languages) const {
    const QStringList source = QStringList{m_preferences.string(keys::dictionary).value_or(QString()),
                                           m_preferences.string(keys::learnedWords).value_or(QString())} +
                               languages;
    const auto words = m_words.of(source, [&] { return wordsFor(languages); });
    if (words->count < kFewestWords)
        return std::nullopt;
    log(LogTag::Prompt, u"%1 hint words for languages: %2"_s.arg(QString::number(words->count),
                                                                 languages.join(QLatin1String(", "))));
    return words->joined;
}

HintPrompt::Words HintPrompt::wordsFor(const QStringList &languages) const {
    WordList words;
    for (const QString &word : dictionaryWords(m_preferences)) {
        QString composedWord = composed(word);
        if (!isForeign(composedWord, languages))
            words.push_back({word, std::move(composedWord)});
    }
    for (const QString &word : learnedWords(m_preferences, languages))
        words.push_back({word, composed(word)});
    sortWithoutDuplicates(words);
    return {words.size(), joined(words)};
}

} // namespace velmo
