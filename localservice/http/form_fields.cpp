#include "localservice/http/form_fields.h"

#include <QByteArrayList>

namespace velmo::localservice {

namespace {

QString decoded(QByteArray text) {
    return QString::fromUtf8(QByteArray::fromPercentEncoding(text.replace('+', ' ')));
}

} // namespace

FormFields::FormFields(const QByteArray &encoded) {
    for (const QByteArray &field : encoded.split('&')) {
        const qsizetype equals = field.indexOf('=');
        if (equals > 0)
            m_values.emplace(decoded(field.first(equals)), decoded(field.sliced(equals + 1)));
    }
}

QString FormFields::value(QLatin1StringView name) const {
    const auto found = m_values.find(name);
    return found == m_values.end() ? QString() : found->second;
}

} // namespace velmo::localservice
