#pragma once

#include "platform/event_tap.h"
#include "platform/keyboard_keys.h"

#include <QHash>
#include <QString>
#include <array>
#include <optional>
#include <vector>
#include <xcb/xcb.h>

namespace velmo::x11 {

class Connection;

/// Which key is which on the keyboard in use: XKB's names of the positions, and what the layout makes of
/// them. A picture of one moment; read it anew when the keyboard changes.
class KeyboardMap {
public:
    /// Asks the server. An empty map when it does not answer.
    [[nodiscard]] static KeyboardMap read(Connection &connection);

    /// The key at that position ("RCTL", or an alias of it).
    [[nodiscard]] std::optional<xcb_keycode_t> codeOf(const QString &name) const;
    /// Nothing for a key without a name.
    [[nodiscard]] std::optional<PhysicalKey> keyAt(xcb_keycode_t code) const;

    /// The key that writes the letter ('a' to 'z') in the first layout or, where none does, in another one;
    /// where no layout has it, the key at its place on a US keyboard.
    [[nodiscard]] std::optional<xcb_keycode_t> codeWriting(char letter) const;

    /// What holding the key means to a shortcut; nothing for a key that is no modifier.
    [[nodiscard]] KeyFlags flagsOf(xcb_keycode_t code) const;

    /// Every combination of the modifiers that are locked rather than held (Caps Lock, Num Lock, Scroll
    /// Lock), as core modifier masks, none at all among them.
    [[nodiscard]] std::vector<uint16_t> lockStates() const;

    bool operator==(const KeyboardMap &other) const = default;

private:
    void readNames(Connection &connection);
    void readSymbols(Connection &connection);
    void readLocks(Connection &connection);
    [[nodiscard]] bool writes(xcb_keycode_t code, xcb_keysym_t symbol, std::size_t column) const;

    static constexpr std::size_t kKeys = 256;

    QHash<QString, xcb_keycode_t> m_codes; ///< By name and by alias.
    std::array<QString, kKeys> m_names;
    std::array<std::vector<xcb_keysym_t>, kKeys> m_symbols;
    uint16_t m_locks = 0; ///< Modifiers that a lock key switches.
};

} // namespace velmo::x11
