#include "base/case_mapping.h"

#include "base/icu_text.h"

#include <unicode/ustring.h>

namespace velmo {

namespace {

using Mapping = int32_t (*)(UChar *, int32_t, const UChar *, int32_t, const char *, UErrorCode *);

constexpr const char *kRootLocale = "";

/// Few texts change their length, so the first try nearly always fits.
QString mapped(QStringView text, Mapping mapping) {
    QString result(text.size(), Qt::Uninitialized);
    for (;;) {
        UErrorCode status = U_ZERO_ERROR;
        const int32_t needed = mapping(reinterpret_cast<UChar *>(result.data()), icu::length(result),
                                       icu::units(text), icu::length(text), kRootLocale, &status);
        result.resize(needed);
        if (status != U_BUFFER_OVERFLOW_ERROR)
            return U_SUCCESS(status) ? result : text.toString();
    }
}

} // namespace

QString lowerCased(QStringView text) {
    return mapped(text, u_strToLower);
}

QString upperCased(QStringView text) {
    return mapped(text, u_strToUpper);
}

} // namespace velmo
