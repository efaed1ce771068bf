#include "platform/linux/x11/desktop/active_application.h"

#include <unistd.h>

namespace velmo::x11 {

namespace {

/// Longest property read, in units of four bytes: names are short, titles are cut.
constexpr uint32_t kLongest = 256;

class PropertyReader {
public:
    PropertyReader(Connection &connection, xcb_window_t window)
        : m_connection(connection), m_window(window) {}

    [[nodiscard]] QByteArray bytes(xcb_atom_t property, xcb_atom_t type) const {
        const auto cookie =
            xcb_get_property(m_connection.xcb(), /*delete=*/0, m_window, property, type, 0, kLongest);
        const Owned<xcb_get_property_reply_t> reply(
            xcb_get_property_reply(m_connection.xcb(), cookie, nullptr));
        if (!reply || reply->type != type)
            return {};
        return {static_cast<const char *>(xcb_get_property_value(reply.get())),
                xcb_get_property_value_length(reply.get())};
    }
    [[nodiscard]] QString text(const char *property) const {
        return QString::fromUtf8(bytes(m_connection.atom(property), m_connection.atom("UTF8_STRING")));
    }
    [[nodiscard]] uint32_t number(const char *property, xcb_atom_t type) const {
        const QByteArray value = bytes(m_connection.atom(property), type);
        uint32_t number = 0;
        if (value.size() >= static_cast<qsizetype>(sizeof number))
            memcpy(&number, value.constData(), sizeof number);
        return number;
    }

private:
    Connection &m_connection;
    xcb_window_t m_window;
};

} // namespace

ActiveApplication::ActiveApplication(MainQueue &queue, std::shared_ptr<DesktopWatch> watch)
    : m_queue(queue), m_watch(std::move(watch)) {
    m_worker.setMaxThreadCount(1); // names are found in the order of the activations
    if (m_watch)
        m_watch->run([this] {
            m_watch->add(this);
            readActiveWindow();
        });
}

ActiveApplication::~ActiveApplication() {
    if (m_watch)
        m_watch->run([this] { m_watch->remove(this); });
}

std::optional<QString> ActiveApplication::frontmostApplicationName() const {
    const std::lock_guard lock(m_mutex);
    return m_name.isEmpty() ? std::nullopt : std::optional(m_name);
}

void ActiveApplication::rootPropertyChanged(xcb_atom_t property) {
    if (property == m_watch->connection().atom("_NET_ACTIVE_WINDOW"))
        readActiveWindow();
}

void ActiveApplication::readActiveWindow() {
    Connection &connection = m_watch->connection();
    const xcb_window_t window =
        PropertyReader(connection, connection.root()).number("_NET_ACTIVE_WINDOW", XCB_ATOM_WINDOW);
    if (window == XCB_WINDOW_NONE && hasOwnWindowKeyboard())
        return;
    if (std::exchange(m_window, window) == window)
        return;
    if (window == XCB_WINDOW_NONE) {
        setName({});
        return;
    }
    const WindowIdentity identity = identify(window);
    setName(identity.className.isEmpty() ? identity.title : identity.className);
    findName(identity);
    announce(identity.process == getpid());
}

/// No window of a window manager's is active while one of ours borrows the keyboard, which it gives back to whom it
/// belongs.
bool ActiveApplication::hasOwnWindowKeyboard() {
    xcb_connection_t *xcb = m_watch->connection().xcb();
    const Owned<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(xcb, xcb_get_input_focus(xcb), nullptr));
    return reply && identify(reply->focus).process == static_cast<uint32_t>(getpid());
}

WindowIdentity ActiveApplication::identify(xcb_window_t window) {
    const PropertyReader read(m_watch->connection(), window);
    WindowIdentity identity;
    identity.desktopId = read.text("_KDE_NET_WM_DESKTOP_FILE");
    if (identity.desktopId.isEmpty())
        identity.desktopId = read.text("_GTK_APPLICATION_ID");
    const auto windowClass = read.bytes(XCB_ATOM_WM_CLASS, XCB_ATOM_STRING).split('\0');
    identity.instance = QString::fromLatin1(windowClass.value(0));
    identity.className = QString::fromLatin1(windowClass.value(1));
    identity.title = read.text("_NET_WM_NAME");
    identity.process = read.number("_NET_WM_PID", XCB_ATOM_CARDINAL);
    return identity;
}

void ActiveApplication::setName(const QString &name) {
    const std::lock_guard lock(m_mutex);
    m_name = name;
    ++m_activation;
}

void ActiveApplication::findName(const WindowIdentity &window) {
    // Only this thread changes the count.
    m_worker.start([this, window, activation = m_activation] {
        QString &name = m_names[window.desktopId + u'\n' + window.instance + u'\n' + window.className];
        if (name.isEmpty())
            name = applicationName(window);
        const std::lock_guard lock(m_mutex);
        if (m_activation == activation)
            m_name = name;
    });
}

void ActiveApplication::announce(bool isThisApplication) {
    m_queue.post(m_lifetime.guard([this, isThisApplication] {
        if (m_handler)
            m_handler(isThisApplication);
    }));
}

} // namespace velmo::x11
