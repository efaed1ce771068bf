#include "platform/linux/xkb/keyboard.h"

#include <array>
#include <string_view>

using namespace Qt::StringLiterals;

namespace velmo::xkb {

namespace {

struct ModifierSymbols {
    xkb_keysym_t first;
    xkb_keysym_t last;
    KeyFlag flag;
};

constexpr std::array kModifierSymbols = {
    ModifierSymbols{XKB_KEY_Shift_L, XKB_KEY_Shift_R, KeyFlag::Shift},
    ModifierSymbols{XKB_KEY_Control_L, XKB_KEY_Control_R, KeyFlag::Control},
    ModifierSymbols{XKB_KEY_Caps_Lock, XKB_KEY_Shift_Lock, KeyFlag::CapsLock},
    ModifierSymbols{XKB_KEY_Meta_L, XKB_KEY_Alt_R, KeyFlag::Option},
    ModifierSymbols{XKB_KEY_Super_L, XKB_KEY_Hyper_R, KeyFlag::Command},
    ModifierSymbols{XKB_KEY_ISO_Level3_Shift, XKB_KEY_ISO_Level3_Shift, KeyFlag::Option},
    ModifierSymbols{XKB_KEY_Mode_switch, XKB_KEY_Mode_switch, KeyFlag::Option},
};

/// The rows of a US keyboard with XKB's names of their first keys.
struct Row {
    const char *prefix;
    std::string_view letters;
};

constexpr std::array kRows = {Row{"AD", "qwertyuiop"}, Row{"AC", "asdfghjkl"}, Row{"AB", "zxcvbnm"}};

QString positionOf(char letter) {
    for (const Row &row : kRows) {
        if (const auto index = row.letters.find(letter); index != std::string_view::npos)
            return u"%1%2"_s.arg(QLatin1StringView(row.prefix)).arg(index + 1, 2, 10, QChar(u'0'));
    }
    return {};
}

xkb_keysym_t symbolIn(xkb_layout_index_t layout, xkb_keycode_t code, xkb_keymap &keymap) {
    const xkb_keysym_t *symbols = nullptr;
    // A key with fewer layouts than the keyboard says itself which one counts.
    const int count = xkb_keymap_key_get_syms_by_level(&keymap, code, layout, /*level=*/0, &symbols);
    return count > 0 ? symbols[0] : XKB_KEY_NoSymbol;
}

/// Presses the key on a keyboard in rest and looks what stays when it is released.
uint16_t lockedBy(xkb_keycode_t code, xkb_keymap &keymap) {
    constexpr xkb_mod_mask_t kKnownToAll = 0xff;
    const std::unique_ptr<xkb_state, decltype(&xkb_state_unref)> state(xkb_state_new(&keymap),
                                                                       &xkb_state_unref);
    xkb_state_update_key(state.get(), code, XKB_KEY_DOWN);
    xkb_state_update_key(state.get(), code, XKB_KEY_UP);
    return xkb_state_serialize_mods(state.get(), XKB_STATE_MODS_LOCKED) & kKnownToAll;
}

uint16_t allLocks(xkb_keymap &keymap) {
    uint16_t locks = 1U << xkb_keymap_mod_get_index(&keymap, XKB_MOD_NAME_CAPS);
    for (auto code = xkb_keymap_min_keycode(&keymap); code <= xkb_keymap_max_keycode(&keymap); ++code)
        locks |= lockedBy(code, keymap);
    return locks;
}

} // namespace

Keyboard::Keyboard(xkb_keymap *keymap, xkb_layout_index_t activeLayout)
    : m_keymap(keymap, &xkb_keymap_unref), m_activeLayout(activeLayout), m_locks(allLocks(*keymap)) {}

std::optional<xkb_keycode_t> Keyboard::codeOf(const QString &name) const {
    const auto code = m_keymap ? xkb_keymap_key_by_name(m_keymap.get(), name.toLatin1().constData())
                               : xkb_keycode_t{XKB_KEYCODE_INVALID};
    return code == XKB_KEYCODE_INVALID ? std::nullopt : std::optional(code);
}

QString Keyboard::nameOf(xkb_keycode_t code) const {
    return m_keymap ? QString::fromLatin1(xkb_keymap_key_get_name(m_keymap.get(), code)) : QString();
}

xkb_keysym_t Keyboard::symbolOf(xkb_keycode_t code) const {
    return m_keymap ? symbolIn(0, code, *m_keymap) : XKB_KEY_NoSymbol;
}

std::optional<xkb_keycode_t> Keyboard::codeWriting(char letter) const {
    const auto code = codeGiving(static_cast<xkb_keysym_t>(letter), 0);
    return code ? code : codeOf(positionOf(letter));
}

std::vector<xkb_keycode_t> Keyboard::codesGiving(std::span<const xkb_keysym_t> symbols) const {
    std::vector<xkb_keycode_t> codes;
    for (const xkb_keysym_t symbol : symbols) {
        const auto code = codeGiving(symbol, m_activeLayout);
        if (!code)
            return {};
        codes.push_back(*code);
    }
    return codes;
}

std::optional<xkb_keycode_t> Keyboard::codeGiving(xkb_keysym_t symbol, xkb_layout_index_t firstLayout) const {
    if (!m_keymap)
        return std::nullopt;
    auto code = codeIn(firstLayout, symbol);
    for (xkb_layout_index_t layout = 0; !code && layout < xkb_keymap_num_layouts(m_keymap.get()); ++layout)
        code = codeIn(layout, symbol);
    return code;
}

std::optional<xkb_keycode_t> Keyboard::codeIn(xkb_layout_index_t layout, xkb_keysym_t symbol) const {
    const auto last = xkb_keymap_max_keycode(m_keymap.get());
    for (auto code = xkb_keymap_min_keycode(m_keymap.get()); code <= last; ++code) {
        if (symbolIn(layout, code, *m_keymap) == symbol)
            return code;
    }
    return std::nullopt;
}

KeyFlags Keyboard::flagsOf(xkb_keycode_t code) const {
    const xkb_keysym_t symbol = symbolOf(code);
    for (const ModifierSymbols &row : kModifierSymbols) {
        if (symbol >= row.first && symbol <= row.last)
            return row.flag;
    }
    return {};
}

std::vector<uint16_t> Keyboard::lockStates() const {
    // Counting down through the subsets of a mask: https://graphics.stanford.edu/~seander/bithacks.html
    std::vector<uint16_t> states;
    for (uint16_t state = m_locks; state != 0; state = static_cast<uint16_t>((state - 1) & m_locks))
        states.push_back(state);
    states.push_back(0);
    return states;
}

} // namespace velmo::xkb
