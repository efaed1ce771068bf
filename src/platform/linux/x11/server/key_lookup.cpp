#include "platform/linux/x11/server/key_lookup.h"

#include "platform/linux/x11/server/xkb.h"

#include <optional>

namespace velmo::x11 {

namespace {

constexpr int kMostLayouts = 4; // of XKB

/// What each key gives, in each layout.
struct Keyboard {
    Owned<xcb_xkb_get_map_reply_t> map; ///< None when the server does not tell.
    int activeLayout = 0;
};

Keyboard readKeyboard(xcb_connection_t *xcb) {
    const auto use = xcb_xkb_use_extension(xcb, XCB_XKB_MAJOR_VERSION, XCB_XKB_MINOR_VERSION);
    const auto getMap = xcb_xkb_get_map(xcb, XCB_XKB_ID_USE_CORE_KBD, XCB_XKB_MAP_PART_KEY_SYMS, 0, 0, 0, 0,
                                        0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0);
    const auto getState = xcb_xkb_get_state(xcb, XCB_XKB_ID_USE_CORE_KBD);
    const Owned<xcb_xkb_use_extension_reply_t> used(xcb_xkb_use_extension_reply(xcb, use, nullptr));
    Keyboard keyboard{Owned<xcb_xkb_get_map_reply_t>(xcb_xkb_get_map_reply(xcb, getMap, nullptr))};
    const Owned<xcb_xkb_get_state_reply_t> state(xcb_xkb_get_state_reply(xcb, getState, nullptr));
    if (state)
        keyboard.activeLayout = state->group;
    return keyboard;
}

xcb_xkb_key_sym_map_iterator_t keysOf(const xcb_xkb_get_map_reply_t &map) {
    xcb_xkb_get_map_map_t parts{};
    xcb_xkb_get_map_map_unpack(xcb_xkb_get_map_map(&map), map.nTypes, map.nKeySyms, map.nKeyActions,
                               map.totalActions, map.totalKeyBehaviors, map.virtualMods, map.totalKeyExplicit,
                               map.totalModMapKeys, map.totalVModMapKeys, map.present, &parts);
    return xcb_xkb_get_map_map_syms_rtrn_iterator(&map, &parts);
}

bool gives(const xcb_xkb_key_sym_map_t &key, xcb_keysym_t symbol, int layout) {
    const int layouts = key.groupInfo & 0x0f;
    if (layouts == 0 || key.width == 0)
        return false;
    // A key with fewer layouts begins anew with the first.
    return xcb_xkb_key_sym_map_syms(&key)[layout % layouts * key.width] == symbol;
}

std::optional<xcb_keycode_t> keyGiving(xcb_keysym_t symbol, const xcb_xkb_get_map_reply_t &map, int layout) {
    xcb_keycode_t code = map.firstKeySym;
    for (auto keys = keysOf(map); keys.rem > 0; xcb_xkb_key_sym_map_next(&keys), ++code) {
        if (gives(*keys.data, symbol, layout))
            return code;
    }
    return std::nullopt;
}

std::optional<xcb_keycode_t> keyGiving(xcb_keysym_t symbol, const Keyboard &keyboard) {
    auto key = keyGiving(symbol, *keyboard.map, keyboard.activeLayout);
    for (int layout = 0; !key && layout < kMostLayouts; ++layout)
        key = keyGiving(symbol, *keyboard.map, layout);
    return key;
}

} // namespace

std::vector<xcb_keycode_t> keysGiving(std::span<const xcb_keysym_t> symbols, const Connection &connection) {
    const Keyboard keyboard = readKeyboard(connection.xcb());
    if (!keyboard.map)
        return {};
    std::vector<xcb_keycode_t> keys;
    for (const xcb_keysym_t symbol : symbols) {
        const auto key = keyGiving(symbol, keyboard);
        if (!key)
            return {};
        keys.push_back(*key);
    }
    return keys;
}

} // namespace velmo::x11
