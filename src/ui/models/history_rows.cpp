#include "ui/models/history_rows.h"

namespace velmo {

QHash<int, QByteArray> HistoryRows::roleNames() const {
    return {{IdRole, "entryId"}, {TextRole, "text"},       {TimeRole, "time"},
            {DayRole, "day"},    {IsFirstRole, "isFirst"}, {IsLastRole, "isLast"}};
}

QVariant HistoryRows::data(const QModelIndex &index, int role) const {
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const HistoryRow &row = rows().at(index.row());
    switch (role) {
    case IdRole:
        return row.id;
    case TextRole:
        return row.text;
    case TimeRole:
        return row.time;
    case DayRole:
        return row.day;
    case IsFirstRole:
        return row.isFirst;
    case IsLastRole:
        return row.isLast;
    default:
        return {};
    }
}

} // namespace velmo
