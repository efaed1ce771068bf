#pragma once

#include "platform/linux/xdg/detached_process.h"
#include "platform/system_settings.h"

namespace velmo {

/// The settings programs of the desktops people use. Which one runs is what XDG_CURRENT_DESKTOP says.
class DesktopSettings final : public SystemSettings {
public:
    [[nodiscard]] bool canOpen(Page page) const override;
    void open(Page page) override;

private:
    std::unique_ptr<DetachedProcess> m_process;
};

} // namespace velmo
