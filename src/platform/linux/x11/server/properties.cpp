#include "platform/linux/x11/server/properties.h"

namespace velmo::x11 {

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

} // namespace velmo::x11
