#include "platform/linux/x11/server/keyboard_map.h"

#include "platform/linux/x11/server/connection.h"
#include "platform/linux/x11/server/xkb.h"

#include <algorithm>
#include <string_view>

using namespace Qt::StringLiterals;

namespace velmo::x11 {

namespace {

// Key symbols, as in X.Org's keysymdef.h.
constexpr xcb_keysym_t kModeSwitch = 0xff7e;
constexpr xcb_keysym_t kNumLock = 0xff7f;
constexpr xcb_keysym_t kScrollLock = 0xff14;
constexpr xcb_keysym_t kLevel3Shift = 0xfe03;

struct ModifierSymbols {
    xcb_keysym_t first;
    xcb_keysym_t last;
    KeyFlag flag;
};

constexpr std::array kModifierSymbols = {
    ModifierSymbols{0xffe1, 0xffe2, KeyFlag::Shift},   // left and right
    ModifierSymbols{0xffe3, 0xffe4, KeyFlag::Control}, // left and right
    ModifierSymbols{0xffe5, 0xffe6, KeyFlag::CapsLock},
    ModifierSymbols{0xffe7, 0xffea, KeyFlag::Option},  // Meta, Alt
    ModifierSymbols{0xffeb, 0xffee, KeyFlag::Command}, // Super, Hyper
    ModifierSymbols{kLevel3Shift, kLevel3Shift, KeyFlag::Option},
    ModifierSymbols{kModeSwitch, kModeSwitch, KeyFlag::Option},
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

/// XKB's names are four bytes, padded with NUL.
QString nameFrom(const char *bytes) {
    return QString::fromLatin1(bytes, static_cast<qsizetype>(std::min<std::size_t>(4, strnlen(bytes, 4))));
}

} // namespace

KeyboardMap KeyboardMap::read(Connection &connection) {
    KeyboardMap map;
    map.readNames(connection);
    map.readSymbols(connection);
    map.readLocks(connection);
    return map;
}

void KeyboardMap::readNames(Connection &connection) {
    constexpr uint32_t which = XCB_XKB_NAME_DETAIL_KEY_NAMES | XCB_XKB_NAME_DETAIL_KEY_ALIASES;
    const Owned<xcb_xkb_get_names_reply_t> reply(xcb_xkb_get_names_reply(
        connection.xcb(), xcb_xkb_get_names(connection.xcb(), XCB_XKB_ID_USE_CORE_KBD, which), nullptr));
    if (!reply)
        return;
    xcb_xkb_get_names_value_list_t list{};
    xcb_xkb_get_names_value_list_unpack(
        xcb_xkb_get_names_value_list(reply.get()), reply->nTypes, reply->indicators, reply->virtualMods,
        reply->groupNames, reply->nKeys, reply->nKeyAliases, reply->nRadioGroups, reply->which, &list);
    for (int i = 0; i < reply->nKeys; ++i) {
        const auto code = static_cast<xcb_keycode_t>(reply->firstKey + i);
        const QString name = nameFrom(list.keyNames[i].name);
        m_names[code] = name;
        if (!name.isEmpty())
            m_codes.insert(name, code);
    }
    for (int i = 0; i < reply->nKeyAliases; ++i) {
        if (const auto code = codeOf(nameFrom(list.keyAliases[i].real)))
            m_codes.insert(nameFrom(list.keyAliases[i].alias), *code);
    }
}

void KeyboardMap::readSymbols(Connection &connection) {
    const xcb_setup_t *setup = xcb_get_setup(connection.xcb());
    const auto first = setup->min_keycode;
    const auto count = static_cast<uint8_t>(setup->max_keycode - first + 1);
    const Owned<xcb_get_keyboard_mapping_reply_t> reply(xcb_get_keyboard_mapping_reply(
        connection.xcb(), xcb_get_keyboard_mapping(connection.xcb(), first, count), nullptr));
    if (!reply)
        return;
    const xcb_keysym_t *symbols = xcb_get_keyboard_mapping_keysyms(reply.get());
    for (std::size_t key = 0; key < count; ++key, symbols += reply->keysyms_per_keycode)
        m_symbols[first + key].assign(symbols, symbols + reply->keysyms_per_keycode);
}

void KeyboardMap::readLocks(Connection &connection) {
    m_locks = XCB_MOD_MASK_LOCK;
    const Owned<xcb_get_modifier_mapping_reply_t> reply(xcb_get_modifier_mapping_reply(
        connection.xcb(), xcb_get_modifier_mapping(connection.xcb()), nullptr));
    if (!reply)
        return;
    const xcb_keycode_t *codes = xcb_get_modifier_mapping_keycodes(reply.get());
    const int perModifier = reply->keycodes_per_modifier;
    for (int i = 0; i < 8 * perModifier; ++i) {
        const auto &symbols = m_symbols[codes[i]];
        if (!symbols.empty() && (symbols.front() == kNumLock || symbols.front() == kScrollLock))
            m_locks |= static_cast<uint16_t>(1U << (i / perModifier));
    }
}

std::optional<xcb_keycode_t> KeyboardMap::codeOf(const QString &name) const {
    const auto found = m_codes.constFind(name);
    return found == m_codes.cend() ? std::nullopt : std::optional(*found);
}

std::optional<PhysicalKey> KeyboardMap::keyAt(xcb_keycode_t code) const {
    if (m_names[code].isEmpty())
        return std::nullopt;
    const auto &symbols = m_symbols[code];
    return PhysicalKey{m_names[code], symbols.empty() ? 0 : symbols.front()};
}

std::optional<xcb_keycode_t> KeyboardMap::codeWriting(char letter) const {
    std::size_t columns = 0;
    for (const auto &symbols : m_symbols)
        columns = std::max(columns, symbols.size());
    for (std::size_t column = 0; column < columns; ++column) {
        for (std::size_t code = 0; code < kKeys; ++code) {
            if (writes(static_cast<xcb_keycode_t>(code), static_cast<xcb_keysym_t>(letter), column))
                return static_cast<xcb_keycode_t>(code);
        }
    }
    return codeOf(positionOf(letter));
}

bool KeyboardMap::writes(xcb_keycode_t code, xcb_keysym_t symbol, std::size_t column) const {
    const auto &symbols = m_symbols[code];
    return column < symbols.size() && symbols[column] == symbol;
}

KeyFlags KeyboardMap::flagsOf(xcb_keycode_t code) const {
    const auto &symbols = m_symbols[code];
    if (symbols.empty())
        return {};
    for (const ModifierSymbols &row : kModifierSymbols) {
        if (symbols.front() >= row.first && symbols.front() <= row.last)
            return row.flag;
    }
    return {};
}

std::vector<uint16_t> KeyboardMap::lockStates() const {
    // Counting down through the subsets of a mask: https://graphics.stanford.edu/~seander/bithacks.html
    std::vector<uint16_t> states;
    for (uint16_t state = m_locks; state != 0; state = static_cast<uint16_t>((state - 1) & m_locks))
        states.push_back(state);
    states.push_back(0);
    return states;
}

} // namespace velmo::x11
