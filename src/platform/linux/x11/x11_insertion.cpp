#include "platform/linux/x11/x11_insertion.h"

#include "platform/linux/x11/insertion/clipboard.h"
#include "platform/linux/x11/insertion/focused_window.h"
#include "platform/linux/x11/insertion/key_injector.h"

#include <xcb/xfixes.h>

using namespace Qt::StringLiterals;

namespace velmo {

struct X11Insertion::Parts {
    Parts(MainQueue &queue, std::unique_ptr<x11::Connection> opened, const X11InsertionOptions &options)
        : connection(std::move(opened)),
          clipboard({queue, *connection, loop, time, deliveries, options.saveLimits}, "CLIPBOARD"),
          primary({queue, *connection, loop, time, deliveries, options.saveLimits}, "PRIMARY"),
          keys(queue, *connection, loop, options.mayInject),
          focus(queue, *connection, loop) {
        loop.addHandler([this](const xcb_generic_event_t &event) {
            clipboard.handle(event);
            primary.handle(event);
            deliveries.handle(event);
            time.handle(event);
        });
        loop.start();
    }
    Parts(const Parts &) = delete;
    Parts &operator=(const Parts &) = delete;
    ~Parts() { loop.stop(); }

    std::unique_ptr<x11::Connection> connection;
    x11::Loop loop{*connection};
    x11::ServerTime time{*connection};
    x11::Deliveries deliveries{*connection, loop};
    x11::X11Clipboard clipboard;
    x11::X11Clipboard primary;
    x11::X11KeyInjector keys;
    x11::X11FocusedWindow focus;
};

Result<std::unique_ptr<X11Insertion>, QString> X11Insertion::open(MainQueue &queue,
                                                                  const X11InsertionOptions &options) {
    auto connection = x11::Connection::open(options.display);
    if (!connection)
        return failed(connection.error());
    if (!(*connection)->has(xcb_xfixes_id))
        return failed(u"The display does not tell of changes of the clipboard."_s);
    auto parts = std::make_unique<Parts>(queue, std::move(*connection), options);
    return std::unique_ptr<X11Insertion>(new X11Insertion(std::move(parts)));
}

X11Insertion::X11Insertion(std::unique_ptr<Parts> parts) : m_parts(std::move(parts)) {}
X11Insertion::~X11Insertion() = default;

Clipboard &X11Insertion::clipboard() {
    return m_parts->clipboard;
}

Clipboard &X11Insertion::primarySelection() {
    return m_parts->primary;
}

KeyInjector &X11Insertion::keyInjector() {
    return m_parts->keys;
}

FocusedWindowFinder &X11Insertion::focusedWindow() {
    return m_parts->focus;
}

} // namespace velmo
