#pragma once

#include "base/main_queue.h"
#include "platform/global_hotkey.h"
#include "platform/linux/x11/server/desktop_watch.h"

namespace velmo::x11 {

/// Hot keys by passive grabs on a connection of their own, one for each state of the locks. These grabs are
/// asynchronous: the server waits for nobody.
class Hotkeys final : public GlobalHotkey {
public:
    /// `watch` may be null: then every registration fails.
    Hotkeys(MainQueue &queue, std::shared_ptr<DesktopWatch> watch, QString display)
        : m_queue(queue), m_watch(std::move(watch)), m_display(std::move(display)) {}

    /// The status is the number of the X error: 10 (BadAccess) when another application has the key.
    [[nodiscard]] Result<std::unique_ptr<Registration>, Status>
    registerHotkey(const Hotkey &hotkey, std::function<void()> pressed) override;

private:
    MainQueue &m_queue;
    std::shared_ptr<DesktopWatch> m_watch;
    QString m_display;
};

} // namespace velmo::x11
