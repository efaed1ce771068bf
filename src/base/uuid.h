#pragma once

#include <QString>

namespace velmo {

/// A random (version 4) UUID as 36 characters in upper case, "3F1C2B9E-8D47-4A0E-9B51-6C2D7E8F9A10":
/// identifiers of records, file names, multipart boundaries.
[[nodiscard]] QString newUpperUuid();

/// The same in lower case: the identifier of an installation.
[[nodiscard]] QString newLowerUuid();

} // namespace velmo
