#pragma once

#include "base/interface.h"
#include "base/result.h"
#include "platform/display_client.h"

#include <QByteArray>
#include <QHash>
#include <QString>
#include <cstdlib>
#include <memory>
#include <xcb/xcb.h>

namespace velmo::x11 {

struct FreeDeleter {
    void operator()(void *memory) const { std::free(memory); }
};

/// What xcb hands out to be freed: replies, events, errors.
template <class T>
using Owned = std::unique_ptr<T, FreeDeleter>;

/// The kind of an event, whether the server or another program sent it.
[[nodiscard]] inline int kindOf(const xcb_generic_event_t &event) {
    return event.response_type & 0x7f;
}

/// The event as what its kind says it is.
template <class Event>
[[nodiscard]] const Event &as(const xcb_generic_event_t &event) {
    return reinterpret_cast<const Event &>(event);
}

/// A connection of our own to the X server, with the things every part of a back-end needs of it. xcb may be
/// called from any thread; the names of atoms are remembered without a lock, so they belong to one thread at
/// a time.
class Connection : private Unmovable {
public:
    /// `display` as in $DISPLAY; empty for what that says. The failure is a sentence.
    static Result<std::unique_ptr<Connection>, QString> open(const QString &display);

    ~Connection();

    [[nodiscard]] xcb_connection_t *xcb() const { return m_xcb; }
    [[nodiscard]] xcb_window_t root() const { return m_screen->root; }

    /// Whether the server knows the extension. A request of one that it does not know ends the connection.
    [[nodiscard]] bool has(xcb_extension_t &extension) const;

    /// The number of a name on this server; the server is asked the first time. 0 when the connection is lost.
    [[nodiscard]] xcb_atom_t atom(const QByteArray &name);
    /// The name of a number; empty when there is none.
    [[nodiscard]] QByteArray nameOf(xcb_atom_t atom);

    /// The window that has the keyboard; none, or XCB_INPUT_FOCUS_POINTER_ROOT for the one under the pointer.
    [[nodiscard]] xcb_window_t windowWithKeyboard() const;

    /// Waits until the server has done all that was asked of it. It sends events from before that first, so they are
    /// there to be read.
    void waitForServer() const { (void)windowWithKeyboard(); }

    /// A window that is never shown: an address for events and properties.
    [[nodiscard]] xcb_window_t createWindow(uint32_t eventMask) const;

    /// The program a window or any other resource belongs to.
    [[nodiscard]] DisplayClient clientOf(uint32_t resource) const {
        return DisplayClient{resource & ~xcb_get_setup(m_xcb)->resource_id_mask};
    }

private:
    Connection(xcb_connection_t *xcb, const xcb_screen_t *screen) : m_xcb(xcb), m_screen(screen) {}

    xcb_connection_t *m_xcb;
    const xcb_screen_t *m_screen;
    QHash<QByteArray, xcb_atom_t> m_atoms;
    QHash<xcb_atom_t, QByteArray> m_names;
};

} // namespace velmo::x11
