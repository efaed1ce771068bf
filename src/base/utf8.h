#pragma once

#include <QByteArray>
#include <QStringView>

namespace velmo {

/// The text as valid UTF-8: half a surrogate pair, which JSON can bring in, becomes U+FFFD (QString::toUtf8
/// writes a question mark). NULs stay.
[[nodiscard]] QByteArray utf8(QStringView text);

} // namespace velmo
