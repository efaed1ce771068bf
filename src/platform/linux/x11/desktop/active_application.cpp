#include "platform/linux/x11/desktop/active_application.h"

#include "platform/linux/x11/server/properties.h"

#include <unistd.h>

namespace velmo::x11 {

namespace {

QString textOf(Connection &connection, xcb_window_t window, const char *property) {
    return QString::fromUtf8(
        bytesOf(connection, window, connection.atom(property), connection.atom("UTF8_STRING")));
}

uint32_t numberOf(Connection &connection, xcb_window_t window, const char *property, xcb_atom_t type) {
    const auto numbers = numbersOf(connection, window, connection.atom(property), type);
    return numbers.empty() ? 0 : numbers.front();
}

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
        numberOf(connection, connection.root(), "_NET_ACTIVE_WINDOW", XCB_ATOM_WINDOW);
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
    return identify(m_watch->connection().windowWithKeyboard()).process == getpid();
}

WindowIdentity ActiveApplication::identify(xcb_window_t window) {
    Connection &connection = m_watch->connection();
    const WindowClass windowClass = windowClassOf(connection, window);
    WindowIdentity identity;
    identity.desktopId = textOf(connection, window, "_KDE_NET_WM_DESKTOP_FILE");
    if (identity.desktopId.isEmpty())
        identity.desktopId = textOf(connection, window, "_GTK_APPLICATION_ID");
    identity.instance = windowClass.instance;
    identity.className = windowClass.name;
    identity.title = textOf(connection, window, "_NET_WM_NAME");
    identity.process = numberOf(connection, window, "_NET_WM_PID", XCB_ATOM_CARDINAL);
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
