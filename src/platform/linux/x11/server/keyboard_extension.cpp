#include "platform/linux/x11/server/keyboard_extension.h"

#include <xkbcommon/xkbcommon-x11.h>

// xcb's header of the extension has a member named `explicit`, so C++ cannot read it as it stands.
#ifdef __clang__
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wkeyword-macro"
#endif
#define explicit explicit_
#include <xcb/xkb.h>
#undef explicit
#ifdef __clang__
#pragma clang diagnostic pop
#endif

namespace velmo::x11 {

namespace {

/// The server wants to be told that a program uses the extension before it is asked for anything of it.
/// @return the kind of all its events; 0, which is none, when the server does not have it.
int useExtension(const Connection &connection) {
    uint8_t firstEvent = 0;
    const bool used = xkb_x11_setup_xkb_extension(
        connection.xcb(), XKB_X11_MIN_MAJOR_XKB_VERSION, XKB_X11_MIN_MINOR_XKB_VERSION,
        XKB_X11_SETUP_XKB_EXTENSION_NO_FLAGS, nullptr, nullptr, &firstEvent, nullptr);
    return used ? firstEvent : 0;
}

template <class T>
using Counted = std::unique_ptr<T, void (*)(T *)>;

xkb_layout_index_t activeLayout(xkb_keymap &keymap, const Connection &connection, int32_t device) {
    const Counted<xkb_state> state(xkb_x11_state_new_from_device(&keymap, connection.xcb(), device),
                                   &xkb_state_unref);
    return state ? xkb_state_serialize_layout(state.get(), XKB_STATE_LAYOUT_EFFECTIVE) : 0;
}

} // namespace

bool hasKeyboardExtension(const Connection &connection) {
    return useExtension(connection) != 0;
}

std::optional<xkb::Keyboard> readKeyboard(const Connection &connection) {
    if (!hasKeyboardExtension(connection))
        return std::nullopt;
    const auto device = xkb_x11_get_core_keyboard_device_id(connection.xcb());
    // The server tells everything; nothing is to be looked up in files or the environment.
    constexpr auto flags =
        static_cast<xkb_context_flags>(XKB_CONTEXT_NO_DEFAULT_INCLUDES | XKB_CONTEXT_NO_ENVIRONMENT_NAMES);
    const Counted<xkb_context> context(xkb_context_new(flags), &xkb_context_unref);
    xkb_keymap *keymap =
        xkb_x11_keymap_new_from_device(context.get(), connection.xcb(), device, XKB_KEYMAP_COMPILE_NO_FLAGS);
    if (!keymap)
        return std::nullopt;
    return xkb::Keyboard(keymap, activeLayout(*keymap, connection, device));
}

int selectKeyboardChanges(const Connection &connection) {
    const int kind = useExtension(connection);
    constexpr uint16_t events = XCB_XKB_EVENT_TYPE_NEW_KEYBOARD_NOTIFY | XCB_XKB_EVENT_TYPE_MAP_NOTIFY |
                                XCB_XKB_EVENT_TYPE_NAMES_NOTIFY;
    constexpr uint16_t parts = XCB_XKB_MAP_PART_KEY_SYMS | XCB_XKB_MAP_PART_MODIFIER_MAP;
    if (kind != 0)
        xcb_xkb_select_events(connection.xcb(), XCB_XKB_ID_USE_CORE_KBD, events, 0, events, parts, parts,
                              nullptr);
    return kind;
}

void askForPlainRepeats(const Connection &connection) {
    if (!hasKeyboardExtension(connection))
        return;
    constexpr uint32_t flag = XCB_XKB_PER_CLIENT_FLAG_DETECTABLE_AUTO_REPEAT;
    const auto cookie =
        xcb_xkb_per_client_flags(connection.xcb(), XCB_XKB_ID_USE_CORE_KBD, flag, flag, 0, 0, 0);
    const Owned<xcb_xkb_per_client_flags_reply_t> set(
        xcb_xkb_per_client_flags_reply(connection.xcb(), cookie, nullptr));
}

} // namespace velmo::x11
