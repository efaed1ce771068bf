#pragma once

#include "base/result.h"

#include <QByteArray>
#include <QJsonObject>
#include <QString>
#include <optional>

namespace velmo {

/// Who is signed in, as the service knows them.
struct VelmoUser {
    QString id;
    std::optional<QString> email;
    std::optional<QString> name;
    std::optional<QString> referralCode;

    bool operator==(const VelmoUser &) const = default;
};

/// The user in a JSON object with "id" and, each absent, null or a string, "email", "name" and "referralCode"; others
/// are passed over. The failure is a sentence that names the member at fault.
[[nodiscard]] Result<VelmoUser, QString> decodeUser(const QJsonObject &object);

/// The same as JSON text; members without a value are left out.
[[nodiscard]] QByteArray encodeUser(const VelmoUser &user);

} // namespace velmo
