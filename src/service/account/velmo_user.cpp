#include "service/account/velmo_user.h"

#include "base/json.h"

#include <array>

namespace velmo {

namespace {

constexpr QLatin1StringView kId{"id"};

struct OptionalMember {
    QLatin1StringView name;
    std::optional<QString> VelmoUser::*field;
};

constexpr std::array kOptionalMembers = {
    OptionalMember{QLatin1StringView("email"), &VelmoUser::email},
    OptionalMember{QLatin1StringView("name"), &VelmoUser::name},
    OptionalMember{QLatin1StringView("referralCode"), &VelmoUser::referralCode},
};

} // namespace

Result<VelmoUser, QString> decodeUser(const QJsonObject &object) {
    const auto id = json::string(object, kId);
    if (!id)
        return failed(QStringLiteral("the user's \"id\" is no string"));
    VelmoUser user{*id, {}, {}, {}};
    for (const OptionalMember &member : kOptionalMembers) {
        const QJsonValue value = object.value(member.name);
        if (value.isUndefined() || value.isNull())
            continue;
        if (!value.isString())
            return failed(QStringLiteral("the user's \"%1\" is no string").arg(member.name));
        user.*member.field = value.toString();
    }
    return user;
}

QByteArray encodeUser(const VelmoUser &user) {
    QJsonObject object{{kId, user.id}};
    for (const OptionalMember &member : kOptionalMembers) {
        if (user.*member.field)
            object.insert(member.name, *(user.*member.field));
    }
    return json::compact(object);
}

} // namespace velmo
