#include "platform/linux/x11/insertion/selection_answers.h"

#include "platform/linux/x11/insertion/selection_formats.h"
#include "platform/linux/x11/server/properties.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace velmo::x11 {

void SelectionAnswers::answer(const xcb_selection_request_event_t &request, const SelectionOffer *offer) {
    // Programs from before 1988 leave the property to us.
    const xcb_atom_t property = request.property == XCB_ATOM_NONE ? request.target : request.property;
    const Deliveries::Address to{request.requestor, property};
    const bool isOneOfUs = m_connection.clientOf(request.requestor) == m_connection.clientOf(request.owner);
    const bool converted = offer && !isOneOfUs && convert(request.target, to, *offer);
    notify(request, converted ? property : xcb_atom_t{XCB_ATOM_NONE});
}

bool SelectionAnswers::convert(xcb_atom_t target, Deliveries::Address to, const SelectionOffer &offer) {
    const QByteArray name = m_connection.nameOf(target);
    if (name == "TARGETS") {
        sendNumbers(to, XCB_ATOM_ATOM, targetsOf(offer));
        return true;
    }
    if (name == "TIMESTAMP") {
        sendNumbers(to, XCB_ATOM_INTEGER, {offer.since});
        return true;
    }
    if (name == "MULTIPLE")
        return convertEach(to, offer);
    const auto item =
        std::find_if(offer.items.begin(), offer.items.end(), [&name](const ClipboardItem &candidate) {
            return candidate.type == QLatin1StringView(name);
        });
    if (item == offer.items.end())
        return false;
    send(to, *item, offer);
    return true;
}

std::vector<uint32_t> SelectionAnswers::targetsOf(const SelectionOffer &offer) {
    std::vector<uint32_t> targets;
    for (const ClipboardItem &item : offer.items)
        targets.push_back(m_connection.atom(item.type.toLatin1()));
    for (const char *question : {"TARGETS", "TIMESTAMP", "MULTIPLE"})
        targets.push_back(m_connection.atom(question));
    return targets;
}

/// MULTIPLE: the property holds pairs of a target and where it goes; those we cannot serve are struck out.
bool SelectionAnswers::convertEach(Deliveries::Address to, const SelectionOffer &offer) {
    constexpr std::size_t kMostPairs = 256;
    auto pairs = numbersOf(m_connection, to.window, to.property);
    if (pairs.empty())
        return false;
    pairs.resize(std::min(pairs.size() / 2, kMostPairs) * 2);
    const xcb_atom_t multiple = m_connection.atom("MULTIPLE");
    for (std::size_t i = 0; i < pairs.size(); i += 2) {
        const bool converted = pairs[i] != multiple && pairs[i + 1] != XCB_ATOM_NONE &&
                               convert(pairs[i], {to.window, pairs[i + 1]}, offer);
        if (!converted)
            pairs[i + 1] = XCB_ATOM_NONE;
    }
    sendNumbers(to, m_connection.atom("ATOM_PAIR"), pairs);
    return true;
}

void SelectionAnswers::send(Deliveries::Address to, const ClipboardItem &item, const SelectionOffer &offer) {
    const QString &type = item.dataType.isEmpty() ? item.type : item.dataType;
    Deliveries::Taken taken;
    if (offer.read && !isMark(item))
        taken = [read = offer.read, client = m_connection.clientOf(to.window)] { read(client); };
    m_deliveries.send(to, {m_connection.atom(type.toLatin1()), item.unitBits, item.data}, std::move(taken));
}

void SelectionAnswers::sendNumbers(Deliveries::Address to, xcb_atom_t type,
                                   const std::vector<uint32_t> &numbers) {
    xcb_change_property(m_connection.xcb(), XCB_PROP_MODE_REPLACE, to.window, to.property, type, 32,
                        static_cast<uint32_t>(numbers.size()), numbers.data());
}

void SelectionAnswers::notify(const xcb_selection_request_event_t &request, xcb_atom_t property) const {
    xcb_selection_notify_event_t notice{};
    notice.response_type = XCB_SELECTION_NOTIFY;
    notice.time = request.time;
    notice.requestor = request.requestor;
    notice.selection = request.selection;
    notice.target = request.target;
    notice.property = property;
    std::array<char, 32> event{}; // on the wire every event has 32 bytes
    std::memcpy(event.data(), &notice, sizeof notice);
    xcb_send_event(m_connection.xcb(), /*propagate=*/0, request.requestor, XCB_EVENT_MASK_NO_EVENT,
                   event.data());
}

} // namespace velmo::x11
