#pragma once

#include <QString>

namespace velmo {

/// Canonical composition (NFC): texts that look the same because a letter is written as one code point here
/// and as letter and mark there become equal. Linear also for letters with any number of marks. Any thread.
[[nodiscard]] QString composed(const QString &text);

} // namespace velmo
