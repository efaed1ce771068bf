#pragma once

#include "platform/linux/x11/server/connection.h"

#include <optional>

namespace velmo::x11 {

/// A synchronous grab of one key on a connection of its own. The server asks about each press before any
/// application sees it and holds the keyboard until it is answered.
///
/// The connection is its own for two reasons: one that owns a grab is not told raw events of the grabbed key,
/// and this one can be taken away by the key guard without harm to anything else.
class TriggerGrab {
public:
    /// Nothing when the display cannot be opened.
    [[nodiscard]] static std::unique_ptr<TriggerGrab> open(const QString &display);

    /// Readable when the server asks something; `next` may know of questions that it no longer announces.
    [[nodiscard]] int descriptor() const;
    /// A resource of the connection, by which the guard can name it.
    [[nodiscard]] uint32_t resource() const { return m_window; }

    /// Takes the key, with whatever modifiers. Waits for the server, which takes in questions: ask `next`
    /// after it.
    /// @return false when another application has grabbed it.
    [[nodiscard]] bool take(xcb_keycode_t code);
    void giveBack();

    /// An event that the server holds back until it is answered: a press (repeats included) or another key's
    /// release. The release of the key itself is kept from others without asking.
    struct Question {
        xcb_keycode_t code;
        xcb_timestamp_t at;
    };
    [[nodiscard]] std::optional<Question> next();

    /// Waits for the server, which takes in what it has asked by now: ask `next` after it.
    void catchUp() { m_connection->waitForServer(); }

    /// The person sees nothing of it; the server asks again at the next event.
    void swallow(const Question &question) { allow(XCB_ALLOW_SYNC_KEYBOARD, question); }
    /// It goes where it would go without us, and so do all others until the key is pressed again.
    void passOn(const Question &question) { allow(XCB_ALLOW_REPLAY_KEYBOARD, question); }

    /// The server or the guard has closed the connection.
    [[nodiscard]] bool isLost() const { return xcb_connection_has_error(m_connection->xcb()) != 0; }

private:
    explicit TriggerGrab(std::unique_ptr<Connection> connection);
    void allow(xcb_allow_t how, const Question &question);

    std::unique_ptr<Connection> m_connection;
    xcb_window_t m_window;
    xcb_keycode_t m_code = 0; ///< 0 while no key is taken.
};

} // namespace velmo::x11
