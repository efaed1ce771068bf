#include "base/json.h"

#include <QJsonDocument>
#include <algorithm>

namespace velmo::json {

namespace {

/// Reads the members of an object in JSON text that Qt's reader has found sound; so it meets no more than a thousand
/// levels. A second reader that keeps integers would not do: one strict about surrogates, escapes and control
/// characters would find nothing in texts whose other members Qt's has read.
class MemberScan {
public:
    explicit MemberScan(const QByteArray &text) : m_text(text) {}

    /// Goes on to the next member of the outermost object; its name and, where it begins, its value.
    [[nodiscard]] bool next() {
        while (m_at < m_text.size()) {
            const char character = m_text[m_at];
            if (character == '"') {
                const QByteArray string = takeString();
                if (m_depth == 1 && takeColon()) {
                    m_name = string;
                    return true;
                }
                continue;
            }
            if (character == '{' || character == '[')
                ++m_depth;
            else if (character == '}' || character == ']')
                --m_depth;
            ++m_at;
        }
        return false;
    }

    [[nodiscard]] bool isNamed(QLatin1StringView name) const {
        return QJsonDocument::fromJson('[' + m_name + ']').array().first().toString() == name;
    }

    /// The value as it is written, where it is a number or a word.
    [[nodiscard]] QByteArray value() const {
        qsizetype end = m_at;
        while (end < m_text.size() && !QByteArrayView(",}] \t\r\n").contains(m_text[end]))
            ++end;
        return m_text.sliced(m_at, end - m_at);
    }

private:
    QByteArray takeString() {
        const qsizetype begin = m_at++;
        while (m_text[m_at] != '"')
            m_at += m_text[m_at] == '\\' ? 2 : 1;
        ++m_at;
        return m_text.sliced(begin, m_at - begin);
    }

    bool takeColon() {
        skipBlanks();
        if (m_text[m_at] != ':')
            return false;
        ++m_at;
        skipBlanks();
        return true;
    }

    void skipBlanks() {
        while (QByteArrayView(" \t\r\n").contains(m_text[m_at]))
            ++m_at;
    }

    const QByteArray &m_text;
    QByteArray m_name;
    qsizetype m_at = 0;
    int m_depth = 0;
};

} // namespace

std::optional<QJsonObject> object(const QByteArray &bytes) {
    const QJsonDocument document = QJsonDocument::fromJson(bytes);
    if (!document.isObject())
        return std::nullopt;
    return document.object();
}

std::optional<QJsonArray> array(const QByteArray &bytes) {
    const QJsonDocument document = QJsonDocument::fromJson(bytes);
    if (!document.isArray())
        return std::nullopt;
    return document.array();
}

std::optional<QJsonArray> arrayOfObjects(const QByteArray &bytes) {
    auto elements = array(bytes);
    if (elements && !std::all_of(elements->begin(), elements->end(),
                                 [](const QJsonValueRef &element) { return element.isObject(); }))
        return std::nullopt;
    return elements;
}

std::optional<QString> string(const QJsonObject &object, QLatin1StringView member) {
    const QJsonValue value = object.value(member);
    if (!value.isString())
        return std::nullopt;
    return value.toString();
}

std::optional<qint64> integer(const QByteArray &objectText, QLatin1StringView member) {
    if (!object(objectText))
        return std::nullopt;
    QByteArray written;
    for (MemberScan scan(objectText); scan.next();) {
        if (scan.isNamed(member))
            written = scan.value();
    }
    bool isInteger = false;
    const qint64 number = written.toLongLong(&isInteger);
    return isInteger ? std::optional(number) : std::nullopt;
}

QByteArray compact(const QJsonObject &object) {
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

QByteArray compact(const QJsonArray &array) {
    return QJsonDocument(array).toJson(QJsonDocument::Compact);
}

} // namespace velmo::json
