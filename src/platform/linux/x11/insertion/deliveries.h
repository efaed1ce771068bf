#pragma once

#include "platform/linux/x11/server/loop.h"

#include <QByteArray>
#include <functional>
#include <vector>

namespace velmo::x11 {

/// Contents on their way to programs that asked for them: in one property, or in pieces when they are larger
/// than a request should be (INCR, ICCCM 2.7.2). A program that ends in the middle, or stops reading, is
/// forgotten. The loop's thread.
class Deliveries {
public:
    /// Where the program wants them.
    struct Address {
        xcb_window_t window;
        xcb_atom_t property;

        friend bool operator==(const Address &, const Address &) = default;
    };
    struct Contents {
        xcb_atom_t type;
        int unitBits;
        QByteArray data;
    };
    /// The program has taken in everything: with the last piece, for those in pieces.
    using Taken = std::function<void()>;

    Deliveries(Connection &connection, Loop &loop) : m_connection(connection), m_loop(loop) {}

    /// Puts the contents, or the announcement of pieces, into the property. What was on its way to the same
    /// address is forgotten.
    void send(Address to, Contents contents, Taken taken);
    void handle(const xcb_generic_event_t &event);

private:
    struct Delivery {
        Address to;
        Contents contents;
        Taken taken;
        qsizetype sent = 0; ///< Bytes that are in the property or were taken from it.
        bool inPieces = false;
        bool ended = false; ///< The empty piece that ends all is in the property.
        Loop::Timer timeout;
    };
    using Position = std::vector<Delivery>::iterator;

    void announce(Delivery &delivery);
    void sendPiece(Delivery &delivery, qsizetype size);
    void write(const Delivery &delivery, xcb_atom_t type, int unitBits, const char *data, qsizetype size);
    void restartTimeout(Delivery &delivery);
    void propertyTaken(Address from);
    void forget(Position position);
    void forget(xcb_window_t window);
    [[nodiscard]] Position find(Address address);
    void listenTo(xcb_window_t window, bool listen);

    Connection &m_connection;
    Loop &m_loop;
    std::vector<Delivery> m_deliveries;
};

} // namespace velmo::x11
