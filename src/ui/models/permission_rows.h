#pragma once

#include "ui/models/row_model.h"

namespace velmo {

/// What Velmo needs to work.
enum class Permission { Microphone, Accessibility, TriggerKey };

/// Whether Velmo has what it needs, as the settings tell it.
struct PermissionRow {
    Permission permission;
    QString title;
    QString subtitle;
    bool isGranted;
    bool canOpenSettings; ///< Not granted, and the desktop has a page where the person can change that.

    bool operator==(const PermissionRow &) const = default;
};

/// Permissions as rows of a view; the roles "title", "subtitle", "granted" and "canOpenSettings".
class PermissionRows final : public RowModel<PermissionRow, Permission> {
public:
    enum Role { TitleRole = Qt::UserRole, SubtitleRole, GrantedRole, CanOpenSettingsRole };

    [[nodiscard]] QHash<int, QByteArray> roleNames() const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;

protected:
    [[nodiscard]] Permission keyOf(const PermissionRow &row) const override { return row.permission; }
};

} // namespace velmo
