#include "key_stage.h"

#include <gtest/gtest.h>
#include <ranges>
#include <vector>
#include <xcb/xinput.h>
#include <xcb/xtest.h>

using namespace Qt::StringLiterals;

namespace velmo::testing {

using namespace std::chrono_literals;
using x11::Connection;
using x11::Owned;

namespace {

std::unique_ptr<Connection> connect(const QString &display) {
    auto connection = Connection::open(display);
    EXPECT_TRUE(connection);
    return std::move(*connection);
}

uint8_t deviceNamed(const Connection &connection, const char *name) {
    const Owned<xcb_input_xi_query_device_reply_t> reply(xcb_input_xi_query_device_reply(
        connection.xcb(), xcb_input_xi_query_device(connection.xcb(), XCB_INPUT_DEVICE_ALL), nullptr));
    auto info = xcb_input_xi_query_device_infos_iterator(reply.get());
    for (; info.rem > 0; xcb_input_xi_device_info_next(&info)) {
        if (QByteArray(xcb_input_xi_device_info_name(info.data),
                       xcb_input_xi_device_info_name_length(info.data)) == name)
            return static_cast<uint8_t>(info.data->deviceid);
    }
    ADD_FAILURE() << "no device named " << name;
    return 0;
}

/// The keyboard that windows get their keys from.
uint8_t masterKeyboard(const Connection &connection) {
    return deviceNamed(connection, "Virtual core keyboard");
}

} // namespace

Hands::Hands(const QString &display) : m_connection(connect(display)) {
    xcb_connection_t *xcb = m_connection->xcb();
    const Owned<xcb_input_xi_query_version_reply_t> version(
        xcb_input_xi_query_version_reply(xcb, xcb_input_xi_query_version(xcb, 2, 1), nullptr));
    m_extensionEvent = xcb_get_extension_data(xcb, &xcb_input_id)->first_event;
    m_keyboard = deviceNamed(*m_connection, "Xvfb keyboard");
    m_mouse = deviceNamed(*m_connection, "Xvfb mouse");
}

void Hands::tap(uint8_t code) {
    press(code);
    release(code);
}

void Hands::chord(std::initializer_list<uint8_t> codes) {
    for (const uint8_t code : codes)
        press(code);
    for (const uint8_t code : std::views::reverse(codes))
        release(code);
}

void Hands::click(QPoint at) {
    xcb_warp_pointer(m_connection->xcb(), XCB_NONE, m_connection->root(), 0, 0, 0, 0,
                     static_cast<int16_t>(at.x()), static_cast<int16_t>(at.y()));
    m_connection->waitForServer();
    move(XCB_BUTTON_PRESS, 1, m_mouse);
    move(XCB_BUTTON_RELEASE, 1, m_mouse);
}

void Hands::tapTwice(uint8_t code, std::chrono::milliseconds secondHeld) {
    send(XCB_KEY_PRESS, code, m_keyboard);
    send(XCB_KEY_RELEASE, code, m_keyboard, 60ms);
    send(XCB_KEY_PRESS, code, m_keyboard, 60ms);
    const auto pressed = xcb_get_input_focus(m_connection->xcb());
    send(XCB_KEY_RELEASE, code, m_keyboard, secondHeld);
    const Owned<xcb_get_input_focus_reply_t> answer(
        xcb_get_input_focus_reply(m_connection->xcb(), pressed, nullptr));
}

void Hands::move(uint8_t kind, uint8_t detail, uint8_t device) {
    send(kind, detail, device);
    m_connection->waitForServer();
}

/// @param device 0 for the XTEST devices.
/// @param pause After what was sent before.
void Hands::send(uint8_t kind, uint8_t detail, uint8_t device, std::chrono::milliseconds pause) {
    // Events of a particular device are numbered from the extension's first, in the same order as the core
    // ones.
    const auto type = static_cast<uint8_t>(
        device == 0 ? kind : m_extensionEvent + XCB_INPUT_DEVICE_KEY_PRESS + kind - XCB_KEY_PRESS);
    xcb_test_fake_input(m_connection->xcb(), type, detail, static_cast<uint32_t>(pause.count()),
                        m_connection->root(), 0, 0, device);
}

void Hands::unplugKeyboard() {
    struct {
        xcb_input_detach_slave_t change;
    } request{};
    request.change.type = XCB_INPUT_HIERARCHY_CHANGE_TYPE_DETACH_SLAVE;
    request.change.len = sizeof request / 4;
    request.change.deviceid = m_keyboard;
    xcb_input_xi_change_hierarchy(m_connection->xcb(), 1,
                                  reinterpret_cast<const xcb_input_hierarchy_change_t *>(&request));
    m_connection->waitForServer();
}

void Hands::plugKeyboardIn() {
    struct {
        xcb_input_attach_slave_t change;
    } request{};
    request.change.type = XCB_INPUT_HIERARCHY_CHANGE_TYPE_ATTACH_SLAVE;
    request.change.len = sizeof request / 4;
    request.change.deviceid = m_keyboard;
    request.change.master = masterKeyboard(*m_connection);
    xcb_input_xi_change_hierarchy(m_connection->xcb(), 1,
                                  reinterpret_cast<const xcb_input_hierarchy_change_t *>(&request));
    m_connection->waitForServer();
}

OtherApplication::OtherApplication(const QString &display) : m_connection(connect(display)) {
    xcb_connection_t *xcb = m_connection->xcb();
    const xcb_window_t window = xcb_generate_id(xcb);
    const uint32_t events = XCB_EVENT_MASK_KEY_PRESS | XCB_EVENT_MASK_KEY_RELEASE;
    xcb_create_window(xcb, XCB_COPY_FROM_PARENT, window, m_connection->root(), 0, 0, 50, 50, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
    xcb_map_window(xcb, window);
    m_connection->waitForServer(); // without a window manager it is shown by now
    xcb_set_input_focus(xcb, XCB_INPUT_FOCUS_POINTER_ROOT, window, XCB_CURRENT_TIME);
    m_connection->waitForServer();
}

QStringList OtherApplication::seen() {
    while (const Owned<xcb_generic_event_t> event{xcb_poll_for_event(m_connection->xcb())}) {
        const int kind = x11::kindOf(*event);
        if (kind != XCB_KEY_PRESS && kind != XCB_KEY_RELEASE)
            continue;
        const auto &moved = x11::as<xcb_key_press_event_t>(*event);
        QString note;
        if (kind == XCB_KEY_PRESS && (moved.state & XCB_MOD_MASK_SHIFT))
            note += u"shift"_s;
        if (kind == XCB_KEY_PRESS && (moved.state & XCB_MOD_MASK_CONTROL))
            note += u"control"_s;
        m_seen.append(note + (kind == XCB_KEY_PRESS ? u'+' : u'-') + QString::number(moved.detail));
    }
    return m_seen;
}

void OtherApplication::grabKey(uint8_t code) {
    xcb_grab_key(m_connection->xcb(), 0, m_connection->root(), XCB_MOD_MASK_ANY, code, XCB_GRAB_MODE_ASYNC,
                 XCB_GRAB_MODE_ASYNC);
    m_connection->waitForServer();
}

void OtherApplication::ungrabKey(uint8_t code) {
    xcb_ungrab_key(m_connection->xcb(), code, m_connection->root(), XCB_MOD_MASK_ANY);
    m_connection->waitForServer();
}

void OtherApplication::grabKeyboard() {
    const auto cookie = xcb_grab_keyboard(m_connection->xcb(), 0, m_connection->root(), XCB_CURRENT_TIME,
                                          XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
    const Owned<xcb_grab_keyboard_reply_t> reply(
        xcb_grab_keyboard_reply(m_connection->xcb(), cookie, nullptr));
    EXPECT_EQ(reply->status, XCB_GRAB_STATUS_SUCCESS);
}

} // namespace velmo::testing
