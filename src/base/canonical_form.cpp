#include "base/canonical_form.h"

#include "base/icu_text.h"

#include <algorithm>
#include <array>
#include <string>
#include <unicode/unorm2.h>
#include <unicode/utf16.h>

namespace velmo {

namespace {

const UNormalizer2 *composition() {
    UErrorCode status = U_ZERO_ERROR;
    return unorm2_getNFCInstance(&status);
}

bool isComposed(const QString &text) {
    UErrorCode status = U_ZERO_ERROR;
    return unorm2_quickCheck(composition(), icu::units(text), icu::length(text), &status) == UNORM_YES;
}

/// The canonical decomposition of each code point, not yet in canonical order.
std::u32string decomposed(QStringView text) {
    std::u32string result;
    for (int32_t at = 0; at < icu::length(text);) {
        UChar32 codePoint = 0;
        U16_NEXT(icu::units(text), at, icu::length(text), codePoint);
        std::array<UChar, 16> pieces = {}; // the longest decomposition has four code points
        UErrorCode status = U_ZERO_ERROR;
        const int32_t length = unorm2_getDecomposition(composition(), codePoint, pieces.data(),
                                                       static_cast<int32_t>(pieces.size()), &status);
        if (length < 0)
            result += static_cast<char32_t>(codePoint);
        else
            result += QString::fromUtf16(pieces.data(), length).toStdU32String();
    }
    return result;
}

/// Puts each run of marks into canonical order. ICU would do it too, but by inserting each mark into those
/// before it, which is quadratic for a long run out of order.
void orderMarks(std::u32string &codePoints) {
    const auto combiningClass = [](char32_t codePoint) {
        return unorm2_getCombiningClass(composition(), static_cast<UChar32>(codePoint));
    };
    const auto isMark = [&](char32_t codePoint) { return combiningClass(codePoint) != 0; };
    for (auto run = codePoints.begin(); run != codePoints.end();) {
        const auto first = std::find_if(run, codePoints.end(), isMark);
        run = std::find_if_not(first, codePoints.end(), isMark);
        std::stable_sort(first, run,
                         [&](char32_t a, char32_t b) { return combiningClass(a) < combiningClass(b); });
    }
}

} // namespace

QString composed(const QString &text) {
    if (isComposed(text))
        return text;
    std::u32string codePoints = decomposed(text);
    orderMarks(codePoints);
    const QString ordered = QString::fromStdU32String(codePoints);
    QString result(ordered.size(), Qt::Uninitialized); // composition never makes a decomposed text longer
    UErrorCode status = U_ZERO_ERROR;
    const int32_t length =
        unorm2_normalize(composition(), icu::units(ordered), icu::length(ordered),
                         reinterpret_cast<UChar *>(result.data()), icu::length(result), &status);
    result.truncate(length);
    return U_SUCCESS(status) ? result : text;
}

} // namespace velmo
