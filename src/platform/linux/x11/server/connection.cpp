#include "platform/linux/x11/server/connection.h"

using namespace Qt::StringLiterals;

namespace velmo::x11 {

namespace {

const xcb_screen_t *screenOf(xcb_connection_t *xcb, int number) {
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(xcb));
    for (; screens.rem > 1 && number > 0; --number)
        xcb_screen_next(&screens);
    return screens.data;
}

} // namespace

Result<std::unique_ptr<Connection>, QString> Connection::open(const QString &display) {
    const QByteArray name = display.toLocal8Bit();
    int screen = 0;
    xcb_connection_t *xcb = xcb_connect(name.isEmpty() ? nullptr : name.constData(), &screen);
    if (xcb_connection_has_error(xcb)) {
        xcb_disconnect(xcb);
        return failed(u"The display could not be opened."_s);
    }
    return std::unique_ptr<Connection>(new Connection(xcb, screenOf(xcb, screen)));
}

Connection::~Connection() {
    xcb_disconnect(m_xcb);
}

bool Connection::has(xcb_extension_t &extension) const {
    const auto *data = xcb_get_extension_data(m_xcb, &extension);
    return data && data->present;
}

xcb_atom_t Connection::atom(const QByteArray &name) {
    if (const auto known = m_atoms.constFind(name); known != m_atoms.cend())
        return *known;
    const auto cookie =
        xcb_intern_atom(m_xcb, /*only_if_exists=*/0, static_cast<uint16_t>(name.size()), name.constData());
    const Owned<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(m_xcb, cookie, nullptr));
    if (!reply)
        return XCB_ATOM_NONE;
    m_names.insert(reply->atom, name);
    return *m_atoms.insert(name, reply->atom);
}

QByteArray Connection::nameOf(xcb_atom_t atom) {
    if (const auto known = m_names.constFind(atom); known != m_names.cend())
        return *known;
    const Owned<xcb_get_atom_name_reply_t> reply(
        xcb_get_atom_name_reply(m_xcb, xcb_get_atom_name(m_xcb, atom), nullptr));
    if (!reply)
        return {};
    const QByteArray name(xcb_get_atom_name_name(reply.get()), xcb_get_atom_name_name_length(reply.get()));
    m_atoms.insert(name, atom);
    return *m_names.insert(atom, name);
}

xcb_window_t Connection::windowWithKeyboard() const {
    const Owned<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(m_xcb, xcb_get_input_focus(m_xcb), nullptr));
    return reply ? reply->focus : xcb_window_t{XCB_WINDOW_NONE};
}

xcb_window_t Connection::createWindow(uint32_t eventMask) const {
    const xcb_window_t window = xcb_generate_id(m_xcb);
    xcb_create_window(m_xcb, XCB_COPY_FROM_PARENT, window, root(), -1, -1, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &eventMask);
    return window;
}

} // namespace velmo::x11
