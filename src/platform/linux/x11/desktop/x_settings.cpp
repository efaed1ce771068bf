#include "platform/linux/x11/desktop/x_settings.h"

#include <QDataStream>

namespace velmo::x11 {

namespace {

// Kinds of values, and the byte that stands first when numbers begin with their most significant byte.
constexpr quint8 kInteger = 0;
constexpr quint8 kText = 1;
constexpr quint8 kColor = 2;
constexpr quint8 kBigEndian = 1;

constexpr int kColorSize = 8;

/// Texts are followed by what is missing to a multiple of four bytes.
int padded(quint32 length) {
    constexpr quint32 kLongest = 1U << 20;
    return static_cast<int>((std::min(length, kLongest) + 3) / 4 * 4);
}

QByteArray readBytes(QDataStream &stream, int count) {
    QByteArray bytes(count, '\0');
    if (stream.readRawData(bytes.data(), count) != count)
        stream.setStatus(QDataStream::ReadPastEnd);
    return bytes;
}

quint32 readNumber(QDataStream &stream) {
    quint32 number = 0;
    stream >> number;
    return number;
}

void skipValue(QDataStream &stream, quint8 kind) {
    if (kind == kText)
        readBytes(stream, padded(readNumber(stream)));
    else if (kind == kColor)
        readBytes(stream, kColorSize);
    else
        stream.setStatus(QDataStream::ReadCorruptData);
}

/// The setting that comes next, if it is the number of that name; passes over any other.
std::optional<int32_t> readSetting(QDataStream &stream, QByteArrayView wanted) {
    quint8 kind = 0;
    quint8 unused = 0;
    quint16 length = 0;
    stream >> kind >> unused >> length;
    const QByteArray name = readBytes(stream, padded(length)).left(length);
    readNumber(stream); // when it changed last
    if (kind != kInteger) {
        skipValue(stream, kind);
        return std::nullopt;
    }
    const auto value = static_cast<int32_t>(readNumber(stream));
    const bool isWanted = stream.status() == QDataStream::Ok && name == wanted;
    return isWanted ? std::optional(value) : std::nullopt;
}

} // namespace

std::optional<int32_t> integerSetting(const QByteArray &settings, QByteArrayView name) {
    QDataStream stream(settings);
    const QByteArray order = readBytes(stream, 4);
    stream.setByteOrder(order.front() == kBigEndian ? QDataStream::BigEndian : QDataStream::LittleEndian);
    readNumber(stream); // counts the changes
    const quint32 count = readNumber(stream);
    for (quint32 i = 0; i < count && stream.status() == QDataStream::Ok; ++i) {
        if (const auto value = readSetting(stream, name))
            return value;
    }
    return std::nullopt;
}

} // namespace velmo::x11
