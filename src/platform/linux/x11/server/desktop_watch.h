#pragma once

#include "base/interface.h"
#include "platform/linux/x11/server/connection.h"
#include "platform/linux/x11/server/input_devices.h"
#include "platform/linux/x11/server/loop.h"
#include "platform/linux/x11/server/server_time.h"
#include "platform/linux/xkb/keyboard.h"

#include <vector>

namespace velmo::x11 {

/// Watches keyboard, mouse and desktop from a thread and a connection of its own. While the trigger key is
/// grabbed, the server holds the keyboard until that thread has answered, so nothing in it waits for anybody
/// but the server: no log line is written there (its reader may be slow), no file read, no lock held that
/// others hold for long.
class DesktopWatch : private Unmovable {
public:
    /// Is told what happens. All in the watch's thread.
    class Observer : public Interface {
    public:
        virtual void inputMoved(const RawInput &) {}
        virtual void keyboardChanged() {} ///< Perhaps: another layout, or other names of keys.
        virtual void devicesChanged() {}  ///< Keyboards or mice came or went.
        virtual void rootPropertyChanged(xcb_atom_t) {}
        virtual void compositorChanged() {} ///< It came or went.
        virtual void settingsChanged() {}   ///< `settings` may be others.
    };

    /// Nothing when the display cannot be opened or cannot report keys.
    [[nodiscard]] static std::unique_ptr<DesktopWatch> open(const QString &display);

    ~DesktopWatch() = default;

    /// Runs the task in the watch's thread and returns once it has run; where that thread has ended because
    /// the display went away, runs it here. Not in the watch's thread.
    void run(const Loop::Task &task);

    // The rest belongs to the watch's thread.

    /// Observers come and go in tasks of the loop, never while one is being told something.
    void add(Observer *observer) { m_observers.push_back(observer); }
    void remove(Observer *observer);

    [[nodiscard]] Loop &loop() { return m_loop; }
    [[nodiscard]] Connection &connection() { return *m_connection; }
    [[nodiscard]] InputDevices &devices() { return m_devices; }
    [[nodiscard]] const xkb::Keyboard &keyboard() const { return m_keyboard; }
    [[nodiscard]] std::chrono::nanoseconds timeOf(const RawInput &input) const {
        return m_clock.toUptime(input.at, uptime());
    }

    /// Whether a compositor draws the windows, so that they can be translucent. Asks the server.
    [[nodiscard]] bool hasCompositor();

    /// What the desktop publishes for programs of any toolkit (XSETTINGS), as it stands; empty where it does not. Asks the
    /// server.
    [[nodiscard]] QByteArray settings();

    /// Has every observer told of what happened before now.
    void catchUp();

private:
    DesktopWatch(std::unique_ptr<Connection> connection, const ServerClock &clock,
                 const InputDevices &devices);

    void handle(const xcb_generic_event_t &event);
    void propertyChanged(xcb_window_t window, xcb_atom_t property);
    void managerChanged(xcb_atom_t selection);
    void followSettings();
    void scheduleKeyboardRead();
    void keyboardChanged();

    std::unique_ptr<Connection> m_connection;
    ServerClock m_clock;
    InputDevices m_devices;
    xkb::Keyboard m_keyboard;
    std::vector<Observer *> m_observers;
    int m_xkbEvent;     ///< The kind of all events of the XKB extension.
    int m_managerEvent; ///< The kind of event that tells of another compositor or manager of settings.
    xcb_window_t m_settingsManager = XCB_WINDOW_NONE;
    bool m_isKeyboardReadScheduled = false;
    Loop m_loop; ///< Last: its thread uses the others.
};

} // namespace velmo::x11
