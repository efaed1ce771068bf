#pragma once

#include <QString>
#include <optional>

namespace velmo {

/// How a character that would break a line, or is no printable one, is written so that a text keeps to its line ("\n",
/// "\u0007"); nothing for the others.
[[nodiscard]] std::optional<QString> lineEscape(QChar character);

} // namespace velmo
