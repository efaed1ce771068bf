#include "text/passes/hallucination_filter.h"

#include "base/canonical_form.h"
#include "base/case_mapping.h"
#include "base/characters.h"
#include "base/log.h"

#include <QSet>
#include <QStringList>
#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

constexpr std::array<QStringView, 4> kStockPhrases = {
    u"Takk for at du ser på.",
    u"Takk for at du så på.",
    u"Thank you for watching.",
    u"Thanks for watching.",
};

/// Words of up to three characters are in every text and say nothing about where it came from.
constexpr qsizetype kShortWordCharacters = 3;

/// From how many words on, which share of them and how many in all must be long words of the prompt. A single
/// word is never an echo: people do dictate single names.
struct EchoThreshold {
    qsizetype words;
    double ratio;
    qsizetype matches;
};

constexpr std::array kEchoThresholds = {
    EchoThreshold{5, 0.75, 3},
    EchoThreshold{3, 0.5, 2},
    EchoThreshold{2, 1.0, 2},
};

/// Case does not count, nor whether a letter is written as one code point or as letter and mark.
QString folded(QStringView text) {
    return composed(lowerCased(text));
}

bool isLong(const QString &word) {
    return firstCharacters(word, kShortWordCharacters).size() < word.size();
}

QString withSpacesFor(const QString &text, bool (*isGap)(char32_t)) {
    QString result;
    result.reserve(text.size());
    for (const char32_t codePoint : text.toUcs4()) {
        if (isGap(codePoint))
            result += u' ';
        else
            result += QChar::fromUcs4(codePoint);
    }
    return result;
}

/// Punctuation other than the comma is part of a word of the prompt.
bool separatesPromptWords(char32_t codePoint) {
    return codePoint == U',' || isWhiteSpace(codePoint);
}

bool separatesTextWords(char32_t codePoint) {
    const bool isDigit = codePoint >= U'0' && codePoint <= U'9';
    return !isDigit && !isAlphabetic(codePoint);
}

/// Composed first, so that the accent of a letter written as two code points does not cut its word.
QStringList wordsOf(const QString &text, bool (*separates)(char32_t)) {
    QStringList words = withSpacesFor(composed(text), separates).split(u' ', Qt::SkipEmptyParts);
    std::transform(words.begin(), words.end(), words.begin(), folded);
    return words;
}

QSet<QString> longWordsOfPrompt(const QString &prompt) {
    QSet<QString> longWords;
    for (const QString &word : wordsOf(prompt, separatesPromptWords)) {
        if (isLong(word))
            longWords.insert(word);
    }
    return longWords;
}

bool reachesThreshold(qsizetype matches, qsizetype words, double ratio) {
    for (const EchoThreshold &row : kEchoThresholds) {
        if (words >= row.words)
            return ratio >= row.ratio && matches >= row.matches;
    }
    return false;
}

} // namespace

bool isHallucinationPhrase(const QString &text) {
    const QString whole = folded(trimmed(text));
    return std::any_of(kStockPhrases.begin(), kStockPhrases.end(),
                       [&](QStringView phrase) { return whole == folded(phrase); });
}

bool isPromptEcho(const QString &text, const std::optional<QString> &prompt) {
    const QSet<QString> promptWords = longWordsOfPrompt(prompt.value_or(QString()));
    if (promptWords.isEmpty())
        return false;
    const QStringList words = wordsOf(text, separatesTextWords);
    if (words.isEmpty())
        return false;

    QStringList matches;
    std::copy_if(words.begin(), words.end(), std::back_inserter(matches),
                 [&](const QString &word) { return isLong(word) && promptWords.contains(word); });
    const double ratio = static_cast<double>(matches.size()) / static_cast<double>(words.size());
    const bool isEcho = reachesThreshold(matches.size(), words.size(), ratio);
    log(LogTag::Hallucination,
        u"%1/%2 long words match (%3%) detected=%4 matched=%5"_s.arg(
            QString::number(matches.size()), QString::number(words.size()), fixed(ratio * 100, 0),
            isEcho ? u"true"_s : u"false"_s, matches.join(u',')));
    return isEcho;
}

} // namespace velmo
