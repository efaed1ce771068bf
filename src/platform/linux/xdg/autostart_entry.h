#pragma once

#include "platform/login_item.h"

namespace velmo {

/// Start at login by a desktop file in the person's autostart folder, as every desktop reads it. The tools of some
/// desktops switch such a file off without removing it; that counts as off.
class AutostartEntry final : public LoginItem {
public:
    /// @param folder "autostart" in the configuration directory; made when it is needed.
    /// @param program the path of this program.
    AutostartEntry(const QString &folder, QString program);

    [[nodiscard]] bool isEnabled() const override;
    [[nodiscard]] Result<void, QString> setEnabled(bool enabled) override;

private:
    [[nodiscard]] Result<void, QString> write() const;
    [[nodiscard]] Result<void, QString> remove() const;

    QString m_path;
    QString m_program;
};

} // namespace velmo
