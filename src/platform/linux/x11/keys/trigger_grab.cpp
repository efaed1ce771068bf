#include "platform/linux/x11/keys/trigger_grab.h"

#include <utility>

namespace velmo::x11 {

std::unique_ptr<TriggerGrab> TriggerGrab::open(const QString &display) {
    auto connection = Connection::open(display);
    if (!connection)
        return nullptr;
    return std::unique_ptr<TriggerGrab>(new TriggerGrab(std::move(*connection)));
}

TriggerGrab::TriggerGrab(std::unique_ptr<Connection> connection)
    : m_connection(std::move(connection)), m_window(m_connection->createWindow(XCB_EVENT_MASK_NO_EVENT)) {
    catchUp(); // the guard can name the window only once the server knows it
}

int TriggerGrab::descriptor() const {
    return xcb_get_file_descriptor(m_connection->xcb());
}

bool TriggerGrab::take(xcb_keycode_t code) {
    giveBack();
    const auto cookie = xcb_grab_key_checked(m_connection->xcb(), /*owner_events=*/1, m_connection->root(),
                                             XCB_MOD_MASK_ANY, code, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_SYNC);
    const Owned<xcb_generic_error_t> error(xcb_request_check(m_connection->xcb(), cookie));
    if (!error)
        m_code = code;
    return !error;
}

void TriggerGrab::giveBack() {
    const auto code = std::exchange(m_code, xcb_keycode_t(0));
    if (code == 0)
        return;
    xcb_ungrab_key(m_connection->xcb(), code, m_connection->root(), XCB_MOD_MASK_ANY);
    xcb_ungrab_keyboard(m_connection->xcb(), XCB_CURRENT_TIME); // if it is held just now
    xcb_flush(m_connection->xcb());
}

std::optional<TriggerGrab::Question> TriggerGrab::next() {
    while (const Owned<xcb_generic_event_t> event{xcb_poll_for_event(m_connection->xcb())}) {
        const int kind = kindOf(*event);
        const auto &key = as<xcb_key_press_event_t>(*event); // releases have the same layout
        if (kind == XCB_KEY_PRESS || (kind == XCB_KEY_RELEASE && key.detail != m_code))
            return Question{key.detail, key.time};
    }
    return std::nullopt;
}

void TriggerGrab::allow(xcb_allow_t how, const Question &question) {
    // With the time of its event, an answer that comes late cannot be taken for one to a later press.
    xcb_allow_events(m_connection->xcb(), static_cast<uint8_t>(how), question.at);
    xcb_flush(m_connection->xcb());
}

} // namespace velmo::x11
