#pragma once

#include "platform/event_tap.h"

#include <QString>
#include <memory>
#include <optional>
#include <span>
#include <vector>
#include <xkbcommon/xkbcommon.h>

/// Keyboards as X servers and Wayland compositors describe them (XKB).
namespace velmo::xkb {

/// A keyboard at one moment: which key is which, and what its layouts make of them. Any thread.
class Keyboard {
public:
    /// One without keys.
    Keyboard() = default;
    /// @param keymap not null; taken over.
    /// @param activeLayout the layout of the keymap in which the person writes.
    Keyboard(xkb_keymap *keymap, xkb_layout_index_t activeLayout);

    /// The key at that position ("RCTL"), or an alias of it.
    [[nodiscard]] std::optional<xkb_keycode_t> codeOf(const QString &name) const;
    /// The name of the key's position; empty for a key without one.
    [[nodiscard]] QString nameOf(xkb_keycode_t code) const;
    /// What the key gives when it is pressed alone, in the first layout; 0 for nothing.
    [[nodiscard]] xkb_keysym_t symbolOf(xkb_keycode_t code) const;

    /// The key that writes the letter ('a' to 'z') in the first layout or, where none does, in another one;
    /// where no layout has it, the key at its place on a US keyboard.
    [[nodiscard]] std::optional<xkb_keycode_t> codeWriting(char letter) const;

    /// The keys that give these symbols when they are pressed alone; empty when one of them is missing. The active
    /// layout counts first, then the others the person has: programs find shortcuts there too, so that Control+V
    /// works while Greek is being written.
    [[nodiscard]] std::vector<xkb_keycode_t> codesGiving(std::span<const xkb_keysym_t> symbols) const;

    /// What holding the key means to a shortcut; nothing for a key that is no modifier.
    [[nodiscard]] KeyFlags flagsOf(xkb_keycode_t code) const;

    /// Every combination of the modifiers that are locked rather than held (Caps Lock, Num Lock, Scroll Lock),
    /// as masks of the eight that all programs know, none at all among them.
    [[nodiscard]] std::vector<uint16_t> lockStates() const;

private:
    [[nodiscard]] std::optional<xkb_keycode_t> codeGiving(xkb_keysym_t symbol,
                                                          xkb_layout_index_t firstLayout) const;
    [[nodiscard]] std::optional<xkb_keycode_t> codeIn(xkb_layout_index_t layout, xkb_keysym_t symbol) const;

    std::shared_ptr<xkb_keymap> m_keymap; ///< Null without keys.
    xkb_layout_index_t m_activeLayout = 0;
    uint16_t m_locks = 0; ///< Modifiers that a key locks.
};

} // namespace velmo::xkb
