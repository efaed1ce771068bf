#include "base/utf8.h"

#include <QStringEncoder>

namespace velmo {

QByteArray utf8(QStringView text) {
    // Stateless, or half a pair at the end would be held back for a text that follows.
    QStringEncoder encoder(QStringEncoder::Utf8, QStringEncoder::Flag::Stateless);
    return encoder.encode(text);
}

} // namespace velmo
