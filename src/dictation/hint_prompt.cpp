#include "dictation/hint_prompt.h"

#include "base/characters.h"
#include "base/composition.h"
#include "base/log.h"
#include "dictation/language_words.h"
#include "store/dictionary_words.h"

#include <QSet>
#include <algorithm>
#include <vector>

namespace velmo {

namespace {

constexpr std::size_t kFewestWords = 3;

/// A set of words that knows canonically equal spellings as one and keeps the first.
class HintWords {
public:
    void add(const QString &word, QString composedWord) {
        if (m_known.contains(composedWord))
            return;
        m_known.insert(composedWord);
        m_words.push_back({word, std::move(composedWord)});
    }

    [[nodiscard]] std::size_t count() const { return m_words.size(); }

    [[nodiscard]] QString joinedInOrder() {
        std::sort(m_words.begin(), m_words.end(), [](const Word &left, const Word &right) {
            return precedesByCodePoints(left.composed, right.composed);
        });
        QString text;
        for (const Word &word : m_words) {
            if (!text.isNull())
                text += QLatin1String(", ");
            text += word.spelling;
        }
        return text;
    }

private:
    struct Word {
        QString spelling;
        QString composed;
    };
    std::vector<Word> m_words;
    QSet<QString> m_known;
};

void addDictionary(HintWords &hints, const Preferences &preferences, const QStringList &languages) {
    for (const QString &word : dictionaryWords(preferences)) {
        QString composedWord = composed(word);
        const bool isForeign = isListedWord(composedWord) && !isListedWord(composedWord, languages);
        if (!isForeign)
            hints.add(word, std::move(composedWord));
    }
}

} // namespace

std::optional<QString> buildHintPrompt(const Preferences &preferences, const QStringList &languages) {
    HintWords hints;
    addDictionary(hints, preferences, languages);
    for (const QString &word : learnedWords(preferences, languages))
        hints.add(word, composed(word));
    if (hints.count() < kFewestWords)
        return std::nullopt;
    log(LogTag::Prompt, QStringLiteral("%1 hint words for languages: %2")
                            .arg(QString::number(hints.count()), languages.join(QLatin1String(", "))));
    return hints.joinedInOrder();
}

} // namespace velmo
