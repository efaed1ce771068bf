#include "app/command_line/preference_text.h"

#include "base/iso_date.h"
#include "base/line_escapes.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

using Parsed = std::optional<PreferenceValue>;

Parsed parseString(const QString &text) {
    return text;
}

Parsed parseBool(const QString &text) {
    if (text == u"true")
        return true;
    if (text == u"false")
        return false;
    return std::nullopt;
}

Parsed parseInteger(const QString &text) {
    bool isNumber = false;
    const qint64 number = text.toLongLong(&isNumber);
    return isNumber ? Parsed(number) : std::nullopt;
}

Parsed parseDate(const QString &text) {
    const auto date = dateFromIsoText(text);
    return date ? Parsed(*date) : std::nullopt;
}

Parsed parseData(const QString &text) {
    auto decoded = QByteArray::fromBase64Encoding(text.toUtf8(), QByteArray::AbortOnBase64DecodingErrors);
    return decoded ? Parsed(std::move(*decoded)) : std::nullopt;
}

/// In the order of the alternatives of PreferenceValue.
constexpr std::array<PreferenceKind, std::variant_size_v<PreferenceValue>> kKinds = {{
    {"string"_L1, "a text"_L1, parseString},
    {"bool"_L1, "true or false"_L1, parseBool},
    {"int"_L1, "a whole number of at most 64 bits"_L1, parseInteger},
    {"date"_L1, "a moment such as 2026-03-14T09:30:00Z"_L1, parseDate},
    {"data"_L1, "bytes in base64"_L1, parseData},
}};

struct ToText {
    QString operator()(const QString &text) const { return text; }
    QString operator()(bool flag) const { return flag ? u"true"_s : u"false"_s; }
    QString operator()(qint64 number) const { return QString::number(number); }
    QString operator()(Date date) const { return isoText(date); }
    QString operator()(const QByteArray &data) const { return QString::fromLatin1(data.toBase64()); }
};

QString escaped(QChar character) {
    return character == u'\\' ? u"\\\\"_s : lineEscape(character).value_or(QString(character));
}

QString escaped(const QString &text) {
    QString line;
    line.reserve(text.size());
    for (const QChar character : text)
        line += escaped(character);
    return line;
}

} // namespace

const PreferenceKind *preferenceKind(QStringView name) {
    const auto found = std::find_if(kKinds.begin(), kKinds.end(),
                                    [name](const PreferenceKind &kind) { return kind.name == name; });
    return found == kKinds.end() ? nullptr : &*found;
}

const PreferenceKind &kindOf(const PreferenceValue &value) {
    return kKinds.at(value.index());
}

QString textOf(const PreferenceValue &value) {
    return std::visit(ToText(), value);
}

QString listLine(const QString &key, const PreferenceValue &value) {
    return escaped(key) + u'\t' + kindOf(value).name + u'\t' + escaped(textOf(value));
}

} // namespace velmo
