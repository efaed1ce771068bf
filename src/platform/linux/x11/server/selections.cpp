#include "platform/linux/x11/server/selections.h"

#include <xcb/xfixes.h>

namespace velmo::x11 {

xcb_window_t ownerOf(xcb_atom_t selection, const Connection &connection) {
    const Owned<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(
        connection.xcb(), xcb_get_selection_owner(connection.xcb(), selection), nullptr));
    return reply ? reply->owner : xcb_window_t{XCB_WINDOW_NONE};
}

int selectOwnerChanges(xcb_atom_t selection, const Connection &connection) {
    xcb_connection_t *xcb = connection.xcb();
    if (!connection.has(xcb_xfixes_id))
        return 0;
    // Without this question the server refuses the rest.
    const Owned<xcb_xfixes_query_version_reply_t> version(xcb_xfixes_query_version_reply(
        xcb, xcb_xfixes_query_version(xcb, XCB_XFIXES_MAJOR_VERSION, XCB_XFIXES_MINOR_VERSION), nullptr));
    xcb_xfixes_select_selection_input(xcb, connection.root(), selection,
                                      XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
    return xcb_get_extension_data(xcb, &xcb_xfixes_id)->first_event + XCB_XFIXES_SELECTION_NOTIFY;
}

} // namespace velmo::x11
