#include "text/vocabulary/apply_dictionary.h"

#include "base/case_mapping.h"
#include "base/characters.h"
#include "base/log.h"
#include "text/vocabulary/vocabulary.h"

#include <algorithm>
#include <unicode/uchar.h>

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

bool isWhiteSpace(QChar unit) {
    return u_isUWhiteSpace(unit.unicode());
}

bool isNoWhiteSpace(QChar unit) {
    return !isWhiteSpace(unit);
}

/// The units at the beginning that fit, taken off the text.
QStringView takeWhile(QStringView &text, bool (*fits)(QChar unit)) {
    const auto end = std::find_if_not(text.begin(), text.end(), fits);
    const QStringView taken = text.first(end - text.begin());
    text = text.sliced(taken.size());
    return taken;
}

/// What joins on to a letter or a number (an accent, the key around a digit) does not change what it is.
bool isLetterOrNumber(QStringView character) {
    const bool isPair = character.front().isHighSurrogate() && character.size() > 1;
    const char32_t codePoint =
        isPair ? QChar::surrogateToUcs4(character[0], character[1]) : character.front().unicode();
    return (U_GET_GC_MASK(static_cast<UChar32>(codePoint)) & (U_GC_L_MASK | U_GC_N_MASK)) != 0;
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
    takeWhile(rest, isWhiteSpace);
    while (!rest.isEmpty()) {
        result += corrected(takeWhile(rest, isNoWhiteSpace), vocabulary);
        result += takeWhile(rest, isWhiteSpace);
    }
    return result.isEmpty() ? text : result;
}

} // namespace velmo
