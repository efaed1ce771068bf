#include "base/characters.h"

#include "base/canonical_form.h"
#include "base/icu_text.h"

#include <algorithm>
#include <memory>
#include <unicode/ubrk.h>
#include <unicode/uchar.h>
#include <unicode/ustring.h>
#include <unicode/utext.h>
#include <vector>

namespace velmo {

namespace {

struct CloseBreaks {
    void operator()(UBreakIterator *iterator) const { ubrk_close(iterator); }
};

/// The calling thread's own iterator: an iterator has a position and a cache, so threads must not share one.
UBreakIterator *characterBreaks(QStringView text) {
    UErrorCode status = U_ZERO_ERROR;
    thread_local const std::unique_ptr<UBreakIterator, CloseBreaks> iterator(
        ubrk_open(UBRK_CHARACTER, "", nullptr, 0, &status));
    status = U_ZERO_ERROR;
    ubrk_setText(iterator.get(), icu::units(text), icu::length(text), &status);
    return iterator.get();
}

/// Below U+0300, the first mark that joins, nothing joins but CR and LF; nearly every text is of that kind.
bool hasOnlySingleUnits(QStringView text) {
    return std::none_of(text.begin(), text.end(),
                        [](QChar unit) { return unit.unicode() >= 0x300 || unit == u'\r'; });
}

bool isBlank(QChar character) {
    return character == u'\t' || character.category() == QChar::Separator_Space;
}

template <class Predicate>
QStringView trimmedOf(QStringView text, Predicate drops) {
    while (!text.isEmpty() && drops(text.front()))
        text = text.sliced(1);
    while (!text.isEmpty() && drops(text.back()))
        text.chop(1);
    return text;
}

} // namespace

std::vector<QStringView> characters(QStringView text) {
    std::vector<QStringView> result;
    result.reserve(static_cast<std::size_t>(text.size()));
    if (hasOnlySingleUnits(text)) {
        for (qsizetype at = 0; at < text.size(); ++at)
            result.push_back(text.sliced(at, 1));
        return result;
    }
    UBreakIterator *breaks = characterBreaks(text);
    for (int32_t start = 0, end = 0; (end = ubrk_next(breaks)) != UBRK_DONE; start = end)
        result.push_back(text.sliced(start, end - start));
    return result;
}

qsizetype characterCount(QStringView text) {
    if (hasOnlySingleUnits(text))
        return text.size();
    UBreakIterator *breaks = characterBreaks(text);
    qsizetype count = 0;
    while (ubrk_next(breaks) != UBRK_DONE)
        ++count;
    return count;
}

QStringView firstCharacters(QStringView text, qsizetype count) {
    UBreakIterator *breaks = characterBreaks(text);
    int32_t end = 0;
    for (qsizetype taken = 0; taken < count; ++taken) {
        const int32_t next = ubrk_next(breaks);
        if (next == UBRK_DONE)
            return text;
        end = next;
    }
    return text.first(end);
}

bool isWhiteSpace(char32_t codePoint) {
    return u_isUWhiteSpace(static_cast<UChar32>(codePoint));
}

bool isAlphabetic(char32_t codePoint) {
    return u_isUAlphabetic(static_cast<UChar32>(codePoint));
}

bool isLetterOrNumber(QStringView character) {
    const bool isPair = character.front().isHighSurrogate() && character.size() > 1;
    const char32_t codePoint =
        isPair ? QChar::surrogateToUcs4(character[0], character[1]) : char32_t{character.front().unicode()};
    return (U_GET_GC_MASK(static_cast<UChar32>(codePoint)) & (U_GC_L_MASK | U_GC_N_MASK)) != 0;
}

QStringView trimmed(QStringView text) {
    return trimmedOf(text, [](QChar unit) { return isWhiteSpace(unit.unicode()); });
}

QStringView trimmedOfBlanks(QStringView text) {
    return trimmedOf(text, isBlank);
}

bool precedesByCodePoints(QStringView left, QStringView right) {
    constexpr UBool byCodePoints = true;
    return u_strCompare(icu::units(left), icu::length(left), icu::units(right), icu::length(right),
                        byCodePoints) < 0;
}

QStringList inOrder(const QStringList &words) {
    struct Word {
        QString composed;
        QString spelling;
    };
    std::vector<Word> sorted;
    sorted.reserve(static_cast<std::size_t>(words.size()));
    for (const QString &word : words)
        sorted.push_back({composed(word), word});
    std::sort(sorted.begin(), sorted.end(), [](const Word &left, const Word &right) {
        if (left.composed == right.composed)
            return precedesByCodePoints(left.spelling, right.spelling);
        return precedesByCodePoints(left.composed, right.composed);
    });
    QStringList spellings;
    spellings.reserve(words.size());
    for (Word &word : sorted)
        spellings.append(std::move(word.spelling));
    return spellings;
}

} // namespace velmo
