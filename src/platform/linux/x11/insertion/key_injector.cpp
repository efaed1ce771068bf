#include "platform/linux/x11/insertion/key_injector.h"

#include "platform/linux/x11/server/keyboard_extension.h"

#include <algorithm>
#include <array>
#include <span>
#include <xcb/xtest.h>

namespace velmo::x11 {

namespace {

// In the order of pressing.
constexpr std::array<xkb_keysym_t, 2> kControlV = {XKB_KEY_Control_L, XKB_KEY_v};
constexpr std::array<xkb_keysym_t, 3> kControlShiftV = {XKB_KEY_Control_L, XKB_KEY_Shift_L, XKB_KEY_v};
constexpr std::array<xkb_keysym_t, 2> kShiftInsert = {XKB_KEY_Shift_L, XKB_KEY_Insert};

std::span<const xkb_keysym_t> symbolsOf(PasteShortcut shortcut) {
    switch (shortcut) {
    case PasteShortcut::ControlV:
        return kControlV;
    case PasteShortcut::ControlShiftV:
        return kControlShiftV;
    case PasteShortcut::ShiftInsert:
        break;
    }
    return kShiftInsert;
}

xcb_void_cookie_t fake(const Connection &connection, uint8_t kind, xcb_keycode_t key) {
    return xcb_test_fake_input_checked(connection.xcb(), kind, key, XCB_CURRENT_TIME, XCB_WINDOW_NONE, 0, 0,
                                       0);
}

bool isDown(const xcb_query_keymap_reply_t &keymap, xcb_keycode_t key) {
    return (keymap.keys[key / 8] >> (key % 8)) & 1;
}

} // namespace

X11KeyInjector::X11KeyInjector(MainQueue &queue, Connection &connection, Loop &loop, bool mayInject)
    : m_queue(queue),
      m_connection(connection),
      m_loop(loop),
      m_canInject(mayInject && connection.has(xcb_test_id) && hasKeyboardExtension(connection)) {}

void X11KeyInjector::press(PasteShortcut shortcut, std::function<void(bool)> done) {
    m_loop.post([this, shortcut, done = onMain(m_queue, std::move(done))] {
        done(m_canInject && pressNow(shortcut));
    });
}

bool X11KeyInjector::pressNow(PasteShortcut shortcut) {
    const auto keyboard = readKeyboard(m_connection);
    if (!keyboard)
        return false;
    auto keys = keyboard->codesGiving(symbolsOf(shortcut));
    if (keys.empty())
        // A keyboard without the letter V, such as a Greek one alone; most programs also paste on these keys.
        keys = keyboard->codesGiving(kShiftInsert);
    return !keys.empty() && send({keys.begin(), keys.end()});
}

X11KeyInjector::Keys X11KeyInjector::heldModifiers() const {
    xcb_connection_t *xcb = m_connection.xcb();
    const auto keymapCookie = xcb_query_keymap(xcb);
    const auto modifiersCookie = xcb_get_modifier_mapping(xcb);
    const Owned<xcb_query_keymap_reply_t> keymap(xcb_query_keymap_reply(xcb, keymapCookie, nullptr));
    const Owned<xcb_get_modifier_mapping_reply_t> modifiers(
        xcb_get_modifier_mapping_reply(xcb, modifiersCookie, nullptr));
    if (!keymap || !modifiers)
        return {};
    const xcb_keycode_t *first = xcb_get_modifier_mapping_keycodes(modifiers.get());
    Keys held(first, first + xcb_get_modifier_mapping_keycodes_length(modifiers.get()));
    std::erase_if(held, [&keymap](xcb_keycode_t key) { return key == 0 || !isDown(*keymap, key); });
    return held;
}

/// A key the person holds would take part in the shortcut, and one that is down already cannot be pressed: so
/// all of them are released first.
bool X11KeyInjector::send(const Keys &keys) const {
    std::vector<xcb_void_cookie_t> sent;
    const auto post = [this, &sent](uint8_t kind, xcb_keycode_t key) {
        sent.push_back(fake(m_connection, kind, key));
    };
    for (const xcb_keycode_t key : heldModifiers())
        post(XCB_KEY_RELEASE, key);
    for (const xcb_keycode_t key : keys)
        post(XCB_KEY_RELEASE, key);
    for (const xcb_keycode_t key : keys)
        post(XCB_KEY_PRESS, key);
    std::for_each(keys.rbegin(), keys.rend(), [&post](xcb_keycode_t key) { post(XCB_KEY_RELEASE, key); });

    bool accepted = true;
    for (const xcb_void_cookie_t cookie : sent) {
        const Owned<xcb_generic_error_t> error(xcb_request_check(m_connection.xcb(), cookie));
        accepted = accepted && !error;
    }
    return accepted;
}

} // namespace velmo::x11
