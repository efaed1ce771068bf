#pragma once

#include <QByteArray>
#include <QString>
#include <map>

namespace velmo::localservice {

/// The fields of a form, or of the query of an address: application/x-www-form-urlencoded, in UTF-8. Of several fields
/// of one name the first counts.
class FormFields {
public:
    explicit FormFields(const QByteArray &encoded);

    /// Empty where there is none of that name.
    [[nodiscard]] QString value(QLatin1StringView name) const;

private:
    std::map<QString, QString> m_values;
};

} // namespace velmo::localservice
