#pragma once

#include "base/main_queue.h"
#include "platform/clipboard.h"
#include "platform/linux/x11/insertion/manager_request.h"
#include "platform/linux/x11/insertion/selection_answers.h"
#include "platform/linux/x11/insertion/selection_reader.h"
#include "platform/linux/x11/server/server_time.h"

#include <memory>
#include <optional>
#include <vector>

namespace velmo::x11 {

/// A selection of the X server (ICCCM 2): CLIPBOARD, or PRIMARY. What it is asked for is done in the loop's
/// thread; the loop has to end before it does.
class X11Clipboard final : public Clipboard {
public:
    struct Collaborators {
        MainQueue &queue;
        Connection &connection;
        Loop &loop;
        ServerTime &time;
        Deliveries &deliveries;
        ClipboardSaveLimits limits;
    };

    X11Clipboard(const Collaborators &collaborators, const QByteArray &selection);

    void save(std::function<void(Saved)> done) override;
    void setText(ChangeCount expected, const QString &text, TextEvents events, Changed done) override;
    void setItems(ChangeCount expected, std::vector<ClipboardItem> items, Changed done) override;
    void handOver(std::function<void()> done) override;

    /// The loop's thread.
    void handle(const xcb_generic_event_t &event);

private:
    struct Change {
        ChangeCount expected;
        std::vector<ClipboardItem> items;
        TextEvents events;
        Changed done;
    };

    void saveNow(std::function<void(Saved)> done);
    void saved(const Saved &contents);
    void make(Change change);
    [[nodiscard]] bool own(xcb_timestamp_t time, Change &change);
    void setOwner(xcb_window_t window, xcb_timestamp_t time) const;
    [[nodiscard]] bool isOwner() const;
    void keepFormer();
    void handOverNow(std::function<void()> done);

    void somebodyOwns(const xcb_generic_event_t &event);
    void lost(const xcb_selection_clear_event_t &event);
    void requested(const xcb_selection_request_event_t &request);
    [[nodiscard]] const SelectionOffer *offerAt(xcb_timestamp_t time) const;

    Collaborators m_with;
    xcb_atom_t m_selection;
    xcb_window_t m_window;
    int m_newOwner; ///< The kind of event that tells of a new owner.
    SelectionAnswers m_answers;
    ManagerRequest m_manager;

    ChangeCount m_changes = 0;
    std::optional<SelectionOffer> m_offer;
    std::function<void()> m_lost; ///< To be called when the offer is replaced by somebody else.
    /// What we offered before. A program that pastes late asks for the time of the keys it acts on.
    std::optional<SelectionOffer> m_former;
    Loop::Timer m_formerEnds;
    std::unique_ptr<SelectionReader> m_reader;
    std::vector<std::function<void(Saved)>> m_saves; ///< Who waits for the reader.
};

} // namespace velmo::x11
