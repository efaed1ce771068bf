#pragma once

#include "platform/linux/x11/server/connection.h"

#include <QPoint>
#include <QStringList>
#include <chrono>

// The two sides of a private display between which Velmo sits: a person at the keyboard and another
// application.
namespace velmo::testing {

/// Keycodes of the keyboard that Xvfb has (evdev's).
namespace key {
constexpr uint8_t leftControl = 37;
constexpr uint8_t letterA = 38; ///< "A" on a US keyboard, "Q" on a French one.
constexpr uint8_t frenchA = 24;
constexpr uint8_t leftShift = 50;
constexpr uint8_t letterX = 53;
constexpr uint8_t letterC = 54;
constexpr uint8_t capsLock = 66;
constexpr uint8_t numLock = 77;
constexpr uint8_t rightControl = 105;
constexpr uint8_t rightAlt = 108;
} // namespace key

/// Moves keys and buttons. As a person it does so at the server's own keyboard and mouse, so that the display
/// cannot tell it from a real one; as a program by the devices that XTEST is there for.
class Hands {
public:
    explicit Hands(const QString &display);

    void press(uint8_t code) { move(XCB_KEY_PRESS, code, m_keyboard); }
    void release(uint8_t code) { move(XCB_KEY_RELEASE, code, m_keyboard); }
    void tap(uint8_t code);
    /// Held together in that order, released in the opposite one.
    void chord(std::initializer_list<uint8_t> codes);
    void click(QPoint at);
    /// Two taps in the server's own time, so their pace does not depend on how busy the machine is. Returns at the second
    /// press, which goes on for that long (less than the gesture allows).
    void tapTwice(uint8_t code, std::chrono::milliseconds secondHeld);

    void pressAsProgram(uint8_t code) { move(XCB_KEY_PRESS, code, 0); }
    void releaseAsProgram(uint8_t code) { move(XCB_KEY_RELEASE, code, 0); }

    void unplugKeyboard();
    void plugKeyboardIn();

private:
    void move(uint8_t kind, uint8_t detail, uint8_t device);
    void send(uint8_t kind, uint8_t detail, uint8_t device, std::chrono::milliseconds pause = {});

    std::unique_ptr<x11::Connection> m_connection;
    uint8_t m_extensionEvent = 0;
    uint8_t m_keyboard = 0;
    uint8_t m_mouse = 0;
};

/// A window that has the keyboard's focus and notes what it gets.
class OtherApplication {
public:
    explicit OtherApplication(const QString &display);

    /// "+54" for a press, "-54" for a release, in order; modifiers that were held stand before: "control+54".
    [[nodiscard]] QStringList seen();
    void forget() { m_seen.clear(); }

    void grabKey(uint8_t code);
    void ungrabKey(uint8_t code);
    void grabKeyboard();

private:
    std::unique_ptr<x11::Connection> m_connection;
    QStringList m_seen;
};

} // namespace velmo::testing
