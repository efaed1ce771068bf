#include "platform/linux/x11/desktop/struts.h"

#include "platform/linux/x11/server/properties.h"

#include <algorithm>
#include <array>

namespace velmo::x11 {

namespace {

enum Edge : std::size_t { Left, Right, Top, Bottom };
constexpr std::array kEdges = {Left, Right, Top, Bottom};

/// Coordinates of a desktop have 15 bits (X11 protocol); what is beyond them comes from a program that errs.
constexpr uint32_t kFarthest = 0x7fff;

/// In the order of the property: the width of the band along each edge, then from where to where each goes.
using Strut = std::array<int, 12>;

QSize desktopSize(Connection &connection) {
    const auto cookie = xcb_get_geometry(connection.xcb(), connection.root());
    const Owned<xcb_get_geometry_reply_t> reply(xcb_get_geometry_reply(connection.xcb(), cookie, nullptr));
    return reply ? QSize(reply->width, reply->height) : QSize();
}

/// The older property knows bands along the whole edge alone.
Strut strutOf(Connection &connection, xcb_window_t window, QSize desktop) {
    auto values = numbersOf(connection, window, connection.atom("_NET_WM_STRUT_PARTIAL"));
    if (values.size() != std::tuple_size_v<Strut>)
        values = numbersOf(connection, window, connection.atom("_NET_WM_STRUT"));
    const int lowest = desktop.height() - 1;
    const int rightmost = desktop.width() - 1;
    Strut strut = {0, 0, 0, 0, 0, lowest, 0, lowest, 0, rightmost, 0, rightmost};
    if (values.size() == std::tuple_size_v<Strut> || values.size() == kEdges.size())
        std::transform(values.begin(), values.end(), strut.begin(),
                       [](uint32_t value) { return static_cast<int>(std::min(value, kFarthest)); });
    return strut;
}

QRect bandAlong(Edge edge, const Strut &strut, QSize desktop) {
    const int width = strut[edge];
    const int from = strut[4 + 2 * edge];
    const int length = strut[5 + 2 * edge] - from + 1;
    switch (edge) {
    case Left:
        return {0, from, width, length};
    case Right:
        return {desktop.width() - width, from, width, length};
    case Top:
        return {from, 0, length, width};
    case Bottom:
        break;
    }
    return {from, desktop.height() - width, length, width};
}

QRect cut(QRect area, Edge edge, QRect band) {
    switch (edge) {
    case Left:
        area.setLeft(std::max(area.left(), band.right() + 1));
        break;
    case Right:
        area.setRight(std::min(area.right(), band.left() - 1));
        break;
    case Top:
        area.setTop(std::max(area.top(), band.bottom() + 1));
        break;
    case Bottom:
        area.setBottom(std::min(area.bottom(), band.top() - 1));
        break;
    }
    return area;
}

/// The band of a panel between two screens goes over all of the one at the desktop's edge, where the panel is not.
bool isOnThisScreen(QRect rest, QRect screen) {
    return 2 * rest.width() >= screen.width() && 2 * rest.height() >= screen.height();
}

} // namespace

QRect freeOf(Connection &connection, QRect screen) {
    const QSize desktop = desktopSize(connection);
    QRect free = screen;
    for (const xcb_window_t window :
         numbersOf(connection, connection.root(), connection.atom("_NET_CLIENT_LIST"))) {
        const Strut strut = strutOf(connection, window, desktop);
        for (const Edge edge : kEdges) {
            const QRect band = bandAlong(edge, strut, desktop);
            const QRect rest = cut(free, edge, band);
            if (band.intersects(screen) && isOnThisScreen(rest, screen))
                free = rest;
        }
    }
    return free;
}

} // namespace velmo::x11
