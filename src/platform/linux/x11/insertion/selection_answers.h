#pragma once

#include "platform/clipboard.h"
#include "platform/linux/x11/insertion/deliveries.h"

#include <functional>
#include <vector>

namespace velmo::x11 {

/// What we offer in a selection, and from when on.
struct SelectionOffer {
    xcb_timestamp_t since;
    std::vector<ClipboardItem> items;
    std::function<void(DisplayClient)> read; ///< Called when a program has taken in a text; may be empty.
};

/// Answers the requests of other programs for what we offer (ICCCM 2.2, 2.6). The loop's thread.
class SelectionAnswers {
public:
    SelectionAnswers(Connection &connection, Deliveries &deliveries)
        : m_connection(connection), m_deliveries(deliveries) {}

    /// Answers from the offer; refuses when there is none.
    void answer(const xcb_selection_request_event_t &request, const SelectionOffer *offer);

    /// Everything a program can ask of this offer, the formats first.
    [[nodiscard]] std::vector<uint32_t> targetsOf(const SelectionOffer &offer);

private:
    [[nodiscard]] bool convert(xcb_atom_t target, Deliveries::Address to, const SelectionOffer &offer);
    [[nodiscard]] bool convertEach(Deliveries::Address to, const SelectionOffer &offer);
    void send(Deliveries::Address to, const ClipboardItem &item, const SelectionOffer &offer);
    void sendNumbers(Deliveries::Address to, xcb_atom_t type, const std::vector<uint32_t> &numbers);
    void notify(const xcb_selection_request_event_t &request, xcb_atom_t property) const;

    Connection &m_connection;
    Deliveries &m_deliveries;
};

} // namespace velmo::x11
