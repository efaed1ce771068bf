#include "ui/models/permission_rows.h"

namespace velmo {

QHash<int, QByteArray> PermissionRows::roleNames() const {
    return {{TitleRole, "title"},
            {SubtitleRole, "subtitle"},
            {GrantedRole, "granted"},
            {CanOpenSettingsRole, "canOpenSettings"}};
}

QVariant PermissionRows::data(const QModelIndex &index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const PermissionRow &row = rows().at(index.row());
    switch (role) {
    case TitleRole:
        return row.title;
    case SubtitleRole:
        return row.subtitle;
    case GrantedRole:
        return row.isGranted;
    case CanOpenSettingsRole:
        return row.canOpenSettings;
    default:
        return {};
    }
}

} // namespace velmo
