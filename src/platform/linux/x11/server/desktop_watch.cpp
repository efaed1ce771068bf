#include "platform/linux/x11/server/desktop_watch.h"

#include "platform/linux/x11/server/keyboard_extension.h"
#include "platform/linux/x11/server/properties.h"
#include "platform/linux/x11/server/selections.h"

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
int selectManagerChanges(Connection &connection) {
    (void)selectOwnerChanges(connection.atom(kCompositor), connection);
    return selectOwnerChanges(connection.atom(kSettingsManager), connection);
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
    return ownerOf(m_connection->atom(kCompositor), *m_connection) != XCB_WINDOW_NONE;
}

QByteArray DesktopWatch::settings() {
    constexpr uint32_t kLongest = 1U << 18;
    const xcb_atom_t settings = m_connection->atom(kSettings);
    return bytesOf(*m_connection, m_settingsManager, settings, settings, kLongest);
}

void DesktopWatch::followSettings() {
    m_settingsManager = ownerOf(m_connection->atom(kSettingsManager), *m_connection);
    if (m_settingsManager == XCB_WINDOW_NONE)
        return;
    const uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(m_connection->xcb(), m_settingsManager, XCB_CW_EVENT_MASK, &events);
}

void DesktopWatch::catchUp() {
    m_connection->waitForServer();
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
