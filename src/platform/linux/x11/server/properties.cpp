#include "platform/linux/x11/server/properties.h"

#include <QByteArrayList>

namespace velmo::x11 {

namespace {

using Property = Owned<xcb_get_property_reply_t>;

/// @param longest in bytes.
Property read(const Connection &connection, xcb_window_t window, xcb_atom_t property, xcb_atom_t type,
              uint32_t longest) {
    constexpr uint32_t kUnit = 4;
    const auto cookie =
        xcb_get_property(connection.xcb(), /*delete=*/0, window, property, type, 0, longest / kUnit);
    return Property(xcb_get_property_reply(connection.xcb(), cookie, nullptr));
}

} // namespace

QByteArray bytesOf(const Connection &connection, xcb_window_t window, xcb_atom_t property, xcb_atom_t type,
                   uint32_t longest) {
    const Property value = read(connection, window, property, type, longest);
    if (!value)
        return {};
    return {static_cast<const char *>(xcb_get_property_value(value.get())),
            xcb_get_property_value_length(value.get())};
}

std::vector<uint32_t> numbersOf(const Connection &connection, xcb_window_t window, xcb_atom_t property,
                                xcb_atom_t type) {
    constexpr uint32_t kLongest = 1U << 14;
    const Property value = read(connection, window, property, type, kLongest);
    if (!value || value->format != 32)
        return {};
    const auto *first = static_cast<const uint32_t *>(xcb_get_property_value(value.get()));
    return {first, first + value->value_len};
}

WindowClass windowClassOf(const Connection &connection, xcb_window_t window) {
    // Two names, each ended by NUL.
    const auto names = bytesOf(connection, window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING).split('\0');
    return {QString::fromLatin1(names.value(0)), QString::fromLatin1(names.value(1))};
}

} // namespace velmo::x11
