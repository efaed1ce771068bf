#include "platform/linux/x11/desktop/dock_windows.h"

#include "platform/linux/x11/server/properties.h"

#include <algorithm>
#include <optional>

namespace velmo::x11 {

namespace {

std::optional<QRect> frameOf(Connection &connection, xcb_window_t window) {
    xcb_connection_t *xcb = connection.xcb();
    const auto sizeCookie = xcb_get_geometry(xcb, window);
    const auto placeCookie = xcb_translate_coordinates(xcb, window, connection.root(), 0, 0);
    const Owned<xcb_get_geometry_reply_t> size(xcb_get_geometry_reply(xcb, sizeCookie, nullptr));
    const Owned<xcb_translate_coordinates_reply_t> place(
        xcb_translate_coordinates_reply(xcb, placeCookie, nullptr));
    if (!size || !place)
        return std::nullopt;
    return QRect(place->dst_x, place->dst_y, size->width, size->height);
}

QList<QRect> dockFrames(Connection &connection) {
    const uint32_t dock = connection.atom("_NET_WM_WINDOW_TYPE_DOCK");
    QList<QRect> frames;
    for (const xcb_window_t window :
         numbersOf(connection, connection.root(), connection.atom("_NET_CLIENT_LIST"))) {
        const auto types = numbersOf(connection, window, connection.atom("_NET_WM_WINDOW_TYPE"));
        if (std::find(types.begin(), types.end(), dock) == types.end())
            continue;
        if (const auto frame = frameOf(connection, window))
            frames.append(*frame);
    }
    return frames;
}

} // namespace

QList<QRect> DockWindows::frames() const {
    QList<QRect> frames;
    if (m_watch)
        m_watch->run([&] { frames = dockFrames(m_watch->connection()); });
    return frames;
}

} // namespace velmo::x11
