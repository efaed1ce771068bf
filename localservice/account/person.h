#pragma once

#include <QString>

namespace velmo::localservice {

/// Whether the text can be a part of a person's name: at most 100 characters (graphemes), no control characters.
[[nodiscard]] bool isNamePart(const QString &text);

/// "Kari Nordmann"; with one part alone, that part.
[[nodiscard]] QString joinedName(const QString &given, const QString &family);

/// Whether the text has the form of an e-mail address: one "@" with something on both sides, at most 254 bytes in UTF-8
/// (RFC 5321), no white space. Whether mail arrives there is nobody's concern here.
[[nodiscard]] bool isEmail(const QString &text);

} // namespace velmo::localservice
