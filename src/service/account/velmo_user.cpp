#include "service/account/velmo_user.h"

#include "base/json.h"

#include <array>

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

constexpr QLatin1StringView kId{"id"};

struct OptionalMember {
    QLatin1StringView name;
    std::optional<QString> VelmoUser::*field;
};

constexpr std::array kOptionalMembers = {
    OptionalMember{"email"_L1, &VelmoUser::email},
    OptionalMember{"name"_L1, &VelmoUser::name},
    OptionalMember{"referralCode"_L1, &VelmoUser::referralCode},
};

} // namespace

Result<VelmoUser, QString> decodeUser(const QJsonObject &object) {
    const auto id = json::string(object, kId);
    if (!id)
        return failed(u"the user's \"id\" is no string"_s);
    VelmoUser user{*id, {}, {}, {}};
    for (const OptionalMember &member : kOptionalMembers) {
        const QJsonValue value = object.value(member.name);
        if (value.isUndefined() || value.isNull())
            continue;
        if (!value.isString())
            return failed(u"the user's \"%1\" is no string"_s.arg(member.name));
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
