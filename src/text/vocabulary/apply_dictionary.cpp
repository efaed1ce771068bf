#include "text/vocabulary/apply_dictionary.h"

#include "base/case_mapping.h"
#include "base/characters.h"
#include "base/log.h"
#include "text/vocabulary/vocabulary.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

bool isGap(QChar unit) {
    return isWhiteSpace(unit.unicode());
}

bool isNoGap(QChar unit) {
    return !isGap(unit);
}

/// The units at the beginning that fit, taken off the text.
QStringView takeWhile(QStringView &text, bool (*fits)(QChar unit)) {
    const auto end = std::find_if_not(text.begin(), text.end(), fits);
    const QStringView taken = text.first(end - text.begin());
    text = text.sliced(taken.size());
    return taken;
}

QStringView withoutTrailingMarks(QStringView token) {
    const auto all = characters(token);
    const auto last = std::find_if(all.rbegin(), all.rend(), isLetterOrNumber);
    return last == all.rend() ? QStringView() : token.first(last->end() - token.begin());
}

bool isAllUpperCase(QStringView word) {
    return upperCased(word) == word && lowerCased(word) != word;
}

QString corrected(QStringView token, const Vocabulary &vocabulary) {
    const QStringView word = withoutTrailingMarks(token);
    const auto correction = vocabulary.correctionOf(word);
    if (!correction)
        return token.toString();
    const QString replacement = isAllUpperCase(word) ? upperCased(correction->word) : correction->word;
    log(LogTag::Dict, u"Fuzzy corrected: '%1' → '%2' (distance: %3)"_s.arg(
                          word.toString(), replacement, QString::number(correction->distance)));
    return replacement + token.sliced(word.size()).toString();
}

} // namespace

QString applyDictionary(const QString &text, const Vocabulary &vocabulary) {
    if (vocabulary.isEmpty())
        return text;
    QString result;
    QStringView rest = text;
    takeWhile(rest, isGap);
    while (!rest.isEmpty()) {
        result += corrected(takeWhile(rest, isNoGap), vocabulary);
        result += takeWhile(rest, isGap);
    }
    return result.isEmpty() ? text : result;
}

} // namespace velmo
