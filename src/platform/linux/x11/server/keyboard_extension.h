#pragma once

#include "platform/linux/x11/server/connection.h"
#include "platform/linux/xkb/keyboard.h"

#include <optional>

/// What is asked of the keyboard extension of the X server (XKB), each time over a connection that need not have used
/// it before. All wait for the server.
namespace velmo::x11 {

/// Whether the server has it.
[[nodiscard]] bool hasKeyboardExtension(const Connection &connection);

/// The keyboard in use. Nothing when the server does not answer.
[[nodiscard]] std::optional<xkb::Keyboard> readKeyboard(const Connection &connection);

/// Begins to listen for other layouts and other names of keys.
/// @return the kind of the events; 0, which is none, without the extension.
[[nodiscard]] int selectKeyboardChanges(const Connection &connection);

/// A held key shall repeat its press alone, not as a series of presses and releases.
void askForPlainRepeats(const Connection &connection);

} // namespace velmo::x11
