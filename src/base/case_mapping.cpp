#include "base/case_mapping.h"

#include "base/characters.h"
#include "base/icu_text.h"

#include <unicode/uchar.h>
#include <unicode/ustring.h>

namespace velmo {

namespace {

constexpr const char *kRootLocale = "";

/// Few texts change their length, so the first try nearly always fits. `map` fills a buffer of the given
/// length and answers how many units it needs, as ICU's functions do.
template <class Map>
QString mapped(QStringView text, Map map) {
    QString result(text.size(), Qt::Uninitialized);
    for (;;) {
        UErrorCode status = U_ZERO_ERROR;
        auto *buffer = reinterpret_cast<UChar *>(result.data());
        const int32_t needed = map(buffer, icu::length(result), icu::units(text), icu::length(text), &status);
        result.resize(needed);
        if (status != U_BUFFER_OVERFLOW_ERROR)
            return U_SUCCESS(status) ? result : text.toString();
    }
}

} // namespace

QString lowerCased(QStringView text) {
    return mapped(text, [](UChar *to, int32_t room, const UChar *from, int32_t size, UErrorCode *status) {
        return u_strToLower(to, room, from, size, kRootLocale, status);
    });
}

QString upperCased(QStringView text) {
    return mapped(text, [](UChar *to, int32_t room, const UChar *from, int32_t size, UErrorCode *status) {
        return u_strToUpper(to, room, from, size, kRootLocale, status);
    });
}

QString caseFolded(QStringView text) {
    return mapped(text, [](UChar *to, int32_t room, const UChar *from, int32_t size, UErrorCode *status) {
        return u_strFoldCase(to, room, from, size, U_FOLD_CASE_DEFAULT, status);
    });
}

bool isLowerCase(QStringView character) {
    return upperCased(character) != character && lowerCased(character) == character;
}

bool isUpperCase(QStringView character) {
    return lowerCased(character) != character && upperCased(character) == character;
}

QString withFirstCapital(const QString &text) {
    const QStringView first = firstCharacters(text, 1);
    if (!isLowerCase(first))
        return text;
    return upperCased(first).append(QStringView(text).sliced(first.size()));
}

} // namespace velmo
