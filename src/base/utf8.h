#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <QStringView>

namespace velmo {

/// The text as valid UTF-8: half a surrogate pair, which JSON can bring in, becomes U+FFFD (QString::toUtf8
/// writes a question mark). NULs stay.
[[nodiscard]] QByteArray utf8(QStringView text);

/// The text that the bytes are, which fall to U+FFFD where they are no UTF-8. What looks like a byte order mark is a
/// character like any other (QString::fromUtf8 drops it).
[[nodiscard]] QString fromUtf8(QByteArrayView bytes);

/// The text as UTF-8 can hold it, for JSON, which would write half a pair as an escape that readers choke on.
[[nodiscard]] QString wellFormed(const QString &text);

} // namespace velmo
