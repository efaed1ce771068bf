#pragma once

#include "base/main_queue.h"
#include "platform/key_injector.h"
#include "platform/linux/x11/server/loop.h"

#include <vector>

namespace velmo::x11 {

/// Keys pressed by the test extension of the X server (XTEST). The loop has to end before it does.
class X11KeyInjector final : public KeyInjector {
public:
    X11KeyInjector(MainQueue &queue, Connection &connection, Loop &loop, bool mayInject);

    [[nodiscard]] bool canInject() const override { return m_canInject; }
    void press(PasteShortcut shortcut, std::function<void(bool)> done) override;

private:
    using Keys = std::vector<xcb_keycode_t>;

    [[nodiscard]] bool pressNow(PasteShortcut shortcut);
    [[nodiscard]] Keys heldModifiers() const;
    [[nodiscard]] bool send(const Keys &keys) const;

    MainQueue &m_queue;
    Connection &m_connection;
    Loop &m_loop;
    bool m_canInject;
};

} // namespace velmo::x11
