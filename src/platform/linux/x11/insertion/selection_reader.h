#pragma once

#include "base/interface.h"
#include "platform/clipboard.h"
#include "platform/linux/x11/server/loop.h"

#include <functional>
#include <optional>
#include <vector>

namespace velmo::x11 {

/// Reads everything another program offers in a selection, one format after another (ICCCM 2.4, 2.7.2). An
/// owner that is slow, frozen or gone costs no more than the time of the limits. The loop's thread.
class SelectionReader : private Unmovable {
public:
    /// What was read, in the order of the offer. May destroy the reader.
    using Done = std::function<void(std::vector<ClipboardItem>)>;

    SelectionReader(Connection &connection, Loop &loop, xcb_atom_t selection, xcb_timestamp_t time,
                    ClipboardSaveLimits limits, Done done);
    ~SelectionReader();

    void handle(const xcb_generic_event_t &event);

private:
    using Property = Owned<xcb_get_property_reply_t>;
    struct Format {
        xcb_atom_t target;
        std::optional<ClipboardItem> item; ///< Once it was read.
    };

    void openWindow();
    void request(xcb_atom_t target);
    void answered(const xcb_selection_notify_event_t &answer);
    void pieceArrived();
    [[nodiscard]] Property takeProperty() const;
    void takeTargets(const xcb_get_property_reply_t &list);
    void offer(const std::vector<xcb_atom_t> &targets);
    void begin(const xcb_get_property_reply_t &announcement);
    [[nodiscard]] bool append(const xcb_get_property_reply_t &piece);
    void complete();
    void giveUpFormat();
    void readNext();
    void outOfTime();
    void finish();

    Connection &m_connection;
    xcb_atom_t m_selection;
    xcb_atom_t m_property;
    xcb_timestamp_t m_time;
    qint64 m_bytesLeft;
    Done m_done;
    Loop::Timer m_deadline;

    xcb_window_t m_window = XCB_WINDOW_NONE;
    xcb_atom_t m_asked = XCB_ATOM_NONE;
    bool m_listed = false;            ///< The owner has told its formats.
    bool m_inPieces = false;          ///< The format asked for comes in pieces.
    ClipboardItem m_item;             ///< What has come of it.
    std::vector<Format> m_formats;    ///< In the order of the offer.
    std::vector<std::size_t> m_order; ///< In which to read them.
    std::size_t m_next = 0;           ///< The place in the order.
    std::size_t m_leftOut = 0;        ///< Formats that the limits did not allow.
};

} // namespace velmo::x11
