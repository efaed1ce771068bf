#pragma once

#include <QStringView>
#include <unicode/utypes.h>

/// ICU and Qt both hold text as UTF-16, so ICU reads a QString in place. Only for source files that talk to
/// ICU; no public header includes this one.
namespace velmo::icu {

[[nodiscard]] inline const UChar *units(QStringView text) {
    return reinterpret_cast<const UChar *>(text.utf16());
}

/// ICU counts in 32 bits; a text that long (2 GiB of one dictation) does not occur.
[[nodiscard]] inline int32_t length(QStringView text) {
    return static_cast<int32_t>(text.size());
}

} // namespace velmo::icu
