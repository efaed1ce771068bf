#include "platform/linux/x11/server/desktop_watch.h"

#include "platform/linux/x11/server/keyboard_extension.h"
#include "platform/linux/x11/server/properties.h"

#include <algorithm>
#include <xcb/xfixes.h>

namespace velmo::x11 {

namespace {

/// A compositor owns this selection (Extended Window Manager Hints). The number is that of the screen; servers have had
/// one alone since monitors can form one desktop.
constexpr const char *kCompositor = "_NET_WM_CM_S0";

/// Who publishes the desktop's settings owns this one, and has them in this property of its window (XSETTINGS).
constexpr const char *kSettingsManager = "_XSETTINGS_S0";
constexpr const char *kSettings = "_XSETTINGS_SETTINGS";

/// Begins to listen for compositors and managers of settings that come and go.
/// @return the kind of the events; 0, which is none, without the extension.
int selectManagerChanges(Connection &connection) {
    xcb_connection_t *xcb = connection.xcb();
    const auto *extension = xcb_get_extension_data(xcb, &xcb_xfixes_id);
    if (!extension || !extension->present)
        return 0;
    const Owned<xcb_xfixes_query_version_reply_t> version(xcb_xfixes_query_version_reply(
        xcb, xcb_xfixes_query_version(xcb, XCB_XFIXES_MAJOR_VERSION, XCB_XFIXES_MINOR_VERSION), nullptr));
    for (const char *selection : {kCompositor, kSettingsManager})
        xcb_xfixes_select_selection_input(xcb, connection.root(), connection.atom(selection),
                                          XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                              XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
                                              XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
    return extension->first_event + XCB_XFIXES_SELECTION_NOTIFY;
}

} // namespace

std::unique_ptr<DesktopWatch> DesktopWatch::open(const QString &display) {
    auto connection = Connection::open(display);
    if (!connection)
        return nullptr;
    const ServerClock clock = ServerClock::measure(**connection);
    const auto devices = InputDevices::open(**connection);
    if (!devices)
        return nullptr;
    return std::unique_ptr<DesktopWatch>(new DesktopWatch(std::move(*connection), clock, *devices));
}

DesktopWatch::DesktopWatch(std::unique_ptr<Connection> connection, const ServerClock &clock,
                           const InputDevices &devices)
    : m_connection(std::move(connection)),
      m_clock(clock),
      m_devices(devices),
      m_xkbEvent(selectKeyboardChanges(*m_connection)),
      m_managerEvent(selectManagerChanges(*m_connection)),
      m_loop(*m_connection) {
    const uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(m_connection->xcb(), m_connection->root(), XCB_CW_EVENT_MASK, &events);
    m_keyboard = readKeyboard(*m_connection).value_or(xkb::Keyboard());
    followSettings();
    m_loop.addHandler([this](const xcb_generic_event_t &event) { handle(event); });
    m_loop.start();
}

void DesktopWatch::run(const Loop::Task &task) {
    if (!m_loop.runAndWait(task))
        task();
}

void DesktopWatch::remove(Observer *observer) {
    m_observers.erase(std::remove(m_observers.begin(), m_observers.end(), observer), m_observers.end());
}

bool DesktopWatch::hasCompositor() {
    return ownerOf(kCompositor) != XCB_WINDOW_NONE;
}

QByteArray DesktopWatch::settings() {
    constexpr uint32_t kLongest = 1U << 18;
    const xcb_atom_t settings = m_connection->atom(kSettings);
    return bytesOf(*m_connection, m_settingsManager, settings, settings, kLongest);
}

xcb_window_t DesktopWatch::ownerOf(const char *selection) {
    xcb_connection_t *xcb = m_connection->xcb();
    const Owned<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(
        xcb, xcb_get_selection_owner(xcb, m_connection->atom(selection)), nullptr));
    return reply ? reply->owner : xcb_window_t{XCB_WINDOW_NONE};
}

void DesktopWatch::followSettings() {
    m_settingsManager = ownerOf(kSettingsManager);
    if (m_settingsManager == XCB_WINDOW_NONE)
        return;
    const uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(m_connection->xcb(), m_settingsManager, XCB_CW_EVENT_MASK, &events);
}

void DesktopWatch::catchUp() {
    // Events that happened before are sent before the answer.
    const Owned<xcb_get_input_focus_reply_t> answer(
        xcb_get_input_focus_reply(m_connection->xcb(), xcb_get_input_focus(m_connection->xcb()), nullptr));
    m_loop.handleEvents();
}

void DesktopWatch::handle(const xcb_generic_event_t &event) {
    if (const auto input = m_devices.rawInput(event)) {
        m_devices.note(*input);
        for (Observer *observer : m_observers)
            observer->inputMoved(*input);
    } else if (m_devices.isChange(event)) {
        m_devices.refresh();
        for (Observer *observer : m_observers)
            observer->devicesChanged();
    } else if (kindOf(event) == XCB_PROPERTY_NOTIFY) {
        const auto &change = as<xcb_property_notify_event_t>(event);
        propertyChanged(change.window, change.atom);
    } else if (m_managerEvent != 0 && kindOf(event) == m_managerEvent) {
        managerChanged(as<xcb_xfixes_selection_notify_event_t>(event).selection);
    } else if (kindOf(event) == XCB_MAPPING_NOTIFY || (m_xkbEvent != 0 && kindOf(event) == m_xkbEvent)) {
        scheduleKeyboardRead();
    }
}

void DesktopWatch::propertyChanged(xcb_window_t window, xcb_atom_t property) {
    for (Observer *observer : m_observers) {
        if (window == m_connection->root())
            observer->rootPropertyChanged(property);
        else
            observer->settingsChanged();
    }
}

void DesktopWatch::managerChanged(xcb_atom_t selection) {
    const bool isCompositor = selection == m_connection->atom(kCompositor);
    if (!isCompositor)
        followSettings();
    for (Observer *observer : m_observers) {
        if (isCompositor)
            observer->compositorChanged();
        else
            observer->settingsChanged();
    }
}

/// One change of layout is several events, and keys that a program injects are two changes, forth and back.
void DesktopWatch::scheduleKeyboardRead() {
    if (!std::exchange(m_isKeyboardReadScheduled, true))
        m_loop.post([this] { keyboardChanged(); });
}

void DesktopWatch::keyboardChanged() {
    m_isKeyboardReadScheduled = false;
    m_keyboard = readKeyboard(*m_connection).value_or(m_keyboard);
    for (Observer *observer : m_observers)
        observer->keyboardChanged();
}

} // namespace velmo::x11
