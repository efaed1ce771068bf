#pragma once

#include "ui/models/row_model.h"

namespace velmo {

/// A dictation in the history list, with its place among those of its day.
struct HistoryRow {
    QString id;
    QString text;
    QString time;        ///< "14:32".
    QString day;         ///< "Today", "Yesterday" or the date.
    bool isFirst = true; ///< Of its day: the list heads it with the day.
    bool isLast = true;

    bool operator==(const HistoryRow &) const = default;
};

/// The history as rows of a view; roles as the fields.
class HistoryRows final : public RowModel<HistoryRow, QString> {
public:
    enum Role { IdRole = Qt::UserRole, TextRole, TimeRole, DayRole, IsFirstRole, IsLastRole };

    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;

protected:
    [[nodiscard]] QString keyOf(const HistoryRow &row) const override { return row.id; }
};

} // namespace velmo
