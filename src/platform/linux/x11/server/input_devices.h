#pragma once

#include <bitset>
#include <optional>
#include <vector>
#include <xcb/xcb.h>

namespace velmo::x11 {

class Connection;

/// A key or a button that moved, whatever window has focus and whoever holds a grab.
struct RawInput {
    enum class Kind { KeyPress, KeyRelease, ButtonPress };
    Kind kind;
    uint32_t detail;    ///< Keycode or number of the button.
    bool isSynthetic;   ///< A program injected it.
    xcb_timestamp_t at; ///< The server's clock.
};

/// The keyboards and mice of the display, by XInput 2. Auto-repeat is not reported: one press, one release.
class InputDevices {
public:
    using KeySet = std::bitset<256>;

    /// Begins to listen. Nothing when the server has no XInput 2.1, the first version that reports keys while
    /// other programs hold a grab.
    [[nodiscard]] static std::optional<InputDevices> open(Connection &connection);

    [[nodiscard]] std::optional<RawInput> rawInput(const xcb_generic_event_t &event) const;
    /// Whether the event says that devices came or went.
    [[nodiscard]] bool isChange(const xcb_generic_event_t &event) const;
    void refresh();

    /// Follows what people hold down. To be told every input, in order.
    void note(const RawInput &input);

    /// The keys that people hold down, on any keyboard, as of the last input noted; what programs hold is
    /// left out.
    [[nodiscard]] const KeySet &keysHeld() const { return m_held; }

    /// Asks the server which of these are really down, for releases that nobody was told of: the machine
    /// slept, a keyboard went away.
    void dropKeysReleased();

private:
    InputDevices(Connection &connection, uint8_t opcode);

    [[nodiscard]] const xcb_ge_generic_event_t *ownEvent(const xcb_generic_event_t &event) const;
    [[nodiscard]] KeySet keysDownNow() const;
    [[nodiscard]] bool isTestDevice(uint16_t device, xcb_atom_t marker) const;

    Connection *m_connection;
    uint8_t m_opcode;
    std::vector<uint16_t> m_keyboards; ///< Those with keys that people press.
    std::vector<uint16_t> m_testDevices;
    KeySet m_held;
};

} // namespace velmo::x11
