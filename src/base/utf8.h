#pragma once

#include <QByteArray>
#include <QString>
#include <QStringView>

namespace velmo {

/// The text as valid UTF-8: half a surrogate pair, which JSON can bring in, becomes U+FFFD (QString::toUtf8
/// writes a question mark). NULs stay.
[[nodiscard]] QByteArray utf8(QStringView text);

/// The text as UTF-8 can hold it, for JSON, which would write half a pair as an escape that readers choke on.
[[nodiscard]] QString wellFormed(const QString &text);

} // namespace velmo
