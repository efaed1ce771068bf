#include "ui/models/language_rows.h"

namespace velmo {

QHash<int, QByteArray> LanguageRows::roleNames() const {
    return {{CodeRole, "code"}, {NameRole, "name"}, {SelectedRole, "selected"}, {PrimaryRole, "primary"}};
}

QVariant LanguageRows::data(const QModelIndex &index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const LanguageRow &row = rows().at(index.row());
    switch (role) {
    case CodeRole:
        return row.code;
    case NameRole:
        return row.name;
    case SelectedRole:
        return row.isSelected;
    case PrimaryRole:
        return row.isPrimary;
    default:
        return {};
    }
}

} // namespace velmo
