#include "platform/linux/x11/dock_windows.h"

#include <algorithm>
#include <optional>
#include <vector>

namespace velmo::x11 {

namespace {

/// The value of a property that is a list of numbers; empty where there is none.
std::vector<uint32_t> numbers(Connection &connection, xcb_window_t window, const char *property) {
    constexpr uint32_t kLongest = 4096;
    xcb_connection_t *xcb = connection.xcb();
    const auto cookie = xcb_get_property(xcb, /*delete=*/0, window, connection.atom(property),
                                         XCB_GET_PROPERTY_TYPE_ANY, 0, kLongest);
    const Owned<xcb_get_property_reply_t> reply(xcb_get_property_reply(xcb, cookie, nullptr));
    if (!reply || reply->format != 32)
        return {};
    const auto *first = static_cast<const uint32_t *>(xcb_get_property_value(reply.get()));
    return {first, first + reply->value_len};
}

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
    for (const xcb_window_t window : numbers(connection, connection.root(), "_NET_CLIENT_LIST")) {
        const auto types = numbers(connection, window, "_NET_WM_WINDOW_TYPE");
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
