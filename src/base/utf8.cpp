#include "base/utf8.h"

#include <QStringDecoder>
#include <QStringEncoder>

namespace velmo {

QByteArray utf8(QStringView text) {
    // Stateless, or half a pair at the end would be held back for a text that follows.
    QStringEncoder encoder(QStringEncoder::Utf8, QStringEncoder::Flag::Stateless);
    return encoder.encode(text);
}

QString fromUtf8(QByteArrayView bytes) {
    using Flag = QStringDecoder::Flag;
    QStringDecoder decoder(QStringDecoder::Utf8, Flag::Stateless | Flag::ConvertInitialBom);
    return decoder.decode(bytes);
}

QString wellFormed(const QString &text) {
    QString result = text;
    for (qsizetype at = 0; at < text.size(); ++at) {
        const bool isPair =
            text[at].isHighSurrogate() && at + 1 < text.size() && text[at + 1].isLowSurrogate();
        if (isPair)
            ++at;
        else if (text[at].isSurrogate())
            result[at] = QChar::ReplacementCharacter;
    }
    return result;
}

} // namespace velmo
