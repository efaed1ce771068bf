#pragma once

#include "ui/models/row_model.h"

namespace velmo {

/// A language on offer, and what is chosen of it.
struct LanguageRow {
    QString code;
    QString name;
    bool isSelected;
    bool isPrimary;

    bool operator==(const LanguageRow &) const = default;
};

/// Languages as rows of a view; the roles "code", "name", "selected" and "primary".
class LanguageRows final : public RowModel<LanguageRow, QString> {
public:
    enum Role { CodeRole = Qt::UserRole, NameRole, SelectedRole, PrimaryRole };

    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;

protected:
    [[nodiscard]] QString keyOf(const LanguageRow &row) const override { return row.code; }
};

} // namespace velmo
