#include "platform/linux/x11/server/input_devices.h"

#include "platform/linux/x11/server/connection.h"

#include <algorithm>
#include <xcb/xinput.h>

namespace velmo::x11 {

namespace {

constexpr uint16_t kMajor = 2;
constexpr uint16_t kMinor = 1;

struct EventSelection {
    xcb_input_event_mask_t header;
    uint32_t mask;
};

void select(Connection &connection, xcb_input_device_id_t devices, uint32_t mask) {
    const EventSelection selection{{devices, 1}, mask};
    xcb_input_xi_select_events(connection.xcb(), connection.root(), 1, &selection.header);
}

bool supportsRawEvents(Connection &connection) {
    const auto *extension = xcb_get_extension_data(connection.xcb(), &xcb_input_id);
    if (!extension || !extension->present)
        return false;
    const Owned<xcb_input_xi_query_version_reply_t> version(xcb_input_xi_query_version_reply(
        connection.xcb(), xcb_input_xi_query_version(connection.xcb(), kMajor, kMinor), nullptr));
    return version && version->major_version == kMajor && version->minor_version >= kMinor;
}

InputDevices::KeySet keysIn(const xcb_input_query_device_state_reply_t &reply) {
    InputDevices::KeySet held;
    auto state = xcb_input_query_device_state_classes_iterator(&reply);
    for (; state.rem > 0; xcb_input_input_state_next(&state)) {
        if (state.data->class_id != XCB_INPUT_INPUT_CLASS_KEY)
            continue;
        const auto *keys = reinterpret_cast<const xcb_input_key_state_t *>(state.data);
        for (std::size_t code = 0; code < held.size(); ++code)
            held[code] = (keys->keys[code / 8] >> (code % 8)) & 1U;
    }
    return held;
}

} // namespace

std::optional<InputDevices> InputDevices::open(Connection &connection) {
    if (!supportsRawEvents(connection))
        return std::nullopt;
    const auto opcode = xcb_get_extension_data(connection.xcb(), &xcb_input_id)->major_opcode;
    InputDevices devices(connection, opcode);
    select(connection, XCB_INPUT_DEVICE_ALL_MASTER,
           XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS | XCB_INPUT_XI_EVENT_MASK_RAW_KEY_RELEASE |
               XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS);
    select(connection, XCB_INPUT_DEVICE_ALL, XCB_INPUT_XI_EVENT_MASK_HIERARCHY);
    devices.refresh();
    devices.m_held = devices.keysDownNow();
    return devices;
}

InputDevices::InputDevices(Connection &connection, uint8_t opcode)
    : m_connection(&connection), m_opcode(opcode) {}

const xcb_ge_generic_event_t *InputDevices::ownEvent(const xcb_generic_event_t &event) const {
    const auto &generic = as<xcb_ge_generic_event_t>(event);
    return kindOf(event) == XCB_GE_GENERIC && generic.extension == m_opcode ? &generic : nullptr;
}

std::optional<RawInput> InputDevices::rawInput(const xcb_generic_event_t &event) const {
    const auto *own = ownEvent(event);
    if (!own)
        return std::nullopt;
    const auto read = [&](RawInput::Kind kind) {
        // Keys and buttons have the same layout.
        const auto &raw = as<xcb_input_raw_button_press_event_t>(event);
        const bool isSynthetic =
            std::find(m_testDevices.begin(), m_testDevices.end(), raw.sourceid) != m_testDevices.end();
        return RawInput{kind, raw.detail, isSynthetic, raw.time};
    };
    switch (own->event_type) {
    case XCB_INPUT_RAW_KEY_PRESS:
        return read(RawInput::Kind::KeyPress);
    case XCB_INPUT_RAW_KEY_RELEASE:
        return read(RawInput::Kind::KeyRelease);
    case XCB_INPUT_RAW_BUTTON_PRESS:
        return read(RawInput::Kind::ButtonPress);
    default:
        return std::nullopt;
    }
}

bool InputDevices::isChange(const xcb_generic_event_t &event) const {
    const auto *own = ownEvent(event);
    return own && own->event_type == XCB_INPUT_HIERARCHY;
}

void InputDevices::refresh() {
    m_keyboards.clear();
    m_testDevices.clear();
    const Owned<xcb_input_xi_query_device_reply_t> reply(xcb_input_xi_query_device_reply(
        m_connection->xcb(), xcb_input_xi_query_device(m_connection->xcb(), XCB_INPUT_DEVICE_ALL), nullptr));
    if (!reply)
        return;
    // The mark the server gives to the devices through which programs inject.
    const xcb_atom_t marker = m_connection->atom("XTEST Device");
    auto info = xcb_input_xi_query_device_infos_iterator(reply.get());
    for (; info.rem > 0; xcb_input_xi_device_info_next(&info)) {
        const bool isKeyboard = info.data->type == XCB_INPUT_DEVICE_TYPE_SLAVE_KEYBOARD;
        if (isKeyboard || info.data->type == XCB_INPUT_DEVICE_TYPE_SLAVE_POINTER) {
            if (isTestDevice(info.data->deviceid, marker))
                m_testDevices.push_back(info.data->deviceid);
            else if (isKeyboard)
                m_keyboards.push_back(info.data->deviceid);
        }
    }
}

bool InputDevices::isTestDevice(uint16_t device, xcb_atom_t marker) const {
    const auto cookie = xcb_input_xi_get_property(m_connection->xcb(), device, /*delete=*/0, marker,
                                                  XCB_GET_PROPERTY_TYPE_ANY, 0, 1);
    const Owned<xcb_input_xi_get_property_reply_t> reply(
        xcb_input_xi_get_property_reply(m_connection->xcb(), cookie, nullptr));
    return reply && reply->type != XCB_ATOM_NONE;
}

void InputDevices::note(const RawInput &input) {
    if (!input.isSynthetic && input.kind != RawInput::Kind::ButtonPress && input.detail < m_held.size())
        m_held[input.detail] = input.kind == RawInput::Kind::KeyPress;
}

/// The server's answer is ahead of the events that still wait to be read, so it may not add keys: their
/// presses, and perhaps releases, are still to come.
void InputDevices::dropKeysReleased() {
    m_held &= keysDownNow();
}

InputDevices::KeySet InputDevices::keysDownNow() const {
    std::vector<xcb_input_query_device_state_cookie_t> cookies;
    for (const uint16_t keyboard : m_keyboards)
        cookies.push_back(xcb_input_query_device_state(m_connection->xcb(), static_cast<uint8_t>(keyboard)));
    KeySet held;
    for (const auto cookie : cookies) {
        // A keyboard that was unplugged meanwhile is an error and holds nothing.
        const Owned<xcb_input_query_device_state_reply_t> reply(
            xcb_input_query_device_state_reply(m_connection->xcb(), cookie, nullptr));
        if (reply)
            held |= keysIn(*reply);
    }
    return held;
}

} // namespace velmo::x11
