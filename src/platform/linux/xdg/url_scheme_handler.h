#pragma once

#include "base/result.h"
#include "platform/linux/xdg/detached_process.h"

#include <QString>

namespace velmo {

/// The desktop file that makes a program the one the desktop opens velmo: addresses with.
[[nodiscard]] QString desktopEntry(const QString &program);

/// Sees to it that the desktop finds this program for velmo: addresses: where no velmo.desktop is installed for all
/// users, writes one for this user and registers it. Registering goes on by itself, also after the end of this object.
class UrlSchemeHandler {
public:
    /// The failure is a sentence.
    [[nodiscard]] Result<void, QString> install(const QString &program);

private:
    void registerEntry(const QString &folder);

    std::unique_ptr<DetachedProcess> m_process;
};

} // namespace velmo
