#include "platform/linux/x11/insertion/deliveries.h"

#include <algorithm>

using namespace std::chrono_literals;

namespace velmo::x11 {

namespace {

/// The largest request that every server takes, less its own fields; what others send in one piece, too.
constexpr qsizetype kPiece = (qsizetype{256} << 10) - 128;

/// A program that has not gone on reading after this time will not.
constexpr auto kPatience = 30s;

} // namespace

void Deliveries::send(Address to, Contents contents, Taken taken) {
    if (const auto former = find(to); former != m_deliveries.end())
        forget(former);
    listenTo(to.window, true);
    Delivery &delivery = m_deliveries.emplace_back();
    delivery.to = to;
    delivery.contents = std::move(contents);
    delivery.taken = std::move(taken);
    restartTimeout(delivery);
    if (delivery.contents.data.size() > kPiece)
        announce(delivery);
    else
        sendPiece(delivery, delivery.contents.data.size());
}

void Deliveries::announce(Delivery &delivery) {
    delivery.inPieces = true;
    const auto atLeast = static_cast<uint32_t>(delivery.contents.data.size());
    write(delivery, m_connection.atom("INCR"), 32, reinterpret_cast<const char *>(&atLeast), sizeof atLeast);
}

void Deliveries::sendPiece(Delivery &delivery, qsizetype size) {
    const Contents &contents = delivery.contents;
    write(delivery, contents.type, contents.unitBits, contents.data.constData() + delivery.sent, size);
    delivery.sent += size;
}

void Deliveries::write(const Delivery &delivery, xcb_atom_t type, int unitBits, const char *data,
                       qsizetype size) {
    const auto units = static_cast<uint32_t>(size / (unitBits / 8));
    xcb_change_property(m_connection.xcb(), XCB_PROP_MODE_REPLACE, delivery.to.window, delivery.to.property,
                        type, static_cast<uint8_t>(unitBits), units, data);
}

void Deliveries::restartTimeout(Delivery &delivery) {
    delivery.timeout = m_loop.after(kPatience, [this, to = delivery.to] {
        if (const auto position = find(to); position != m_deliveries.end())
            forget(position);
    });
}

void Deliveries::handle(const xcb_generic_event_t &event) {
    switch (kindOf(event)) {
    case XCB_PROPERTY_NOTIFY: {
        const auto &change = as<xcb_property_notify_event_t>(event);
        if (change.state == XCB_PROPERTY_DELETE)
            propertyTaken({change.window, change.atom});
        break;
    }
    case XCB_DESTROY_NOTIFY:
        forget(as<xcb_destroy_notify_event_t>(event).window);
        break;
    case 0: // an error
        if (as<xcb_generic_error_t>(event).error_code == XCB_WINDOW)
            forget(as<xcb_generic_error_t>(event).resource_id);
        break;
    default:
        break;
    }
}

/// The program removes the property to say that it has it.
void Deliveries::propertyTaken(Address from) {
    const auto position = find(from);
    if (position == m_deliveries.end())
        return;
    Delivery &delivery = *position;
    const qsizetype left = delivery.contents.data.size() - delivery.sent;
    Taken taken;
    if (left == 0)
        taken = std::exchange(delivery.taken, {});
    if (!delivery.inPieces || delivery.ended) {
        forget(position);
    } else {
        restartTimeout(delivery);
        delivery.ended = left == 0;
        sendPiece(delivery, std::min(left, kPiece));
    }
    if (taken)
        taken();
}

void Deliveries::forget(Position position) {
    const xcb_window_t window = position->to.window;
    m_deliveries.erase(position);
    const bool others =
        std::any_of(m_deliveries.begin(), m_deliveries.end(),
                    [window](const Delivery &delivery) { return delivery.to.window == window; });
    if (!others)
        listenTo(window, false);
}

void Deliveries::forget(xcb_window_t window) {
    std::erase_if(m_deliveries, [window](const Delivery &delivery) { return delivery.to.window == window; });
}

Deliveries::Position Deliveries::find(Address address) {
    return std::find_if(m_deliveries.begin(), m_deliveries.end(),
                        [address](const Delivery &delivery) { return delivery.to == address; });
}

void Deliveries::listenTo(xcb_window_t window, bool listen) {
    const uint32_t mask = listen ? XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY : 0;
    xcb_change_window_attributes(m_connection.xcb(), window, XCB_CW_EVENT_MASK, &mask);
}

} // namespace velmo::x11
