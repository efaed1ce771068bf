#include "platform/linux/x11/insertion/clipboard.h"

#include "platform/linux/x11/insertion/selection_formats.h"
#include "platform/linux/x11/server/selections.h"

#include <utility>
#include <xcb/xfixes.h>

using namespace std::chrono_literals;

namespace velmo::x11 {

namespace {

/// A program that pastes later than this after the keys is beyond help.
constexpr auto kFormerTime = 30s;

} // namespace

X11Clipboard::X11Clipboard(const Collaborators &collaborators, const QByteArray &selection)
    : m_with(collaborators),
      m_selection(collaborators.connection.atom(selection)),
      m_window(collaborators.connection.createWindow(XCB_EVENT_MASK_NO_EVENT)),
      m_newOwner(selectOwnerChanges(m_selection, collaborators.connection)),
      m_answers(collaborators.connection, collaborators.deliveries),
      m_manager(collaborators.connection, collaborators.loop, m_window) {}

// Asked for by the main thread

void X11Clipboard::save(std::function<void(Saved)> done) {
    m_with.loop.post([this, done = onMain(m_with.queue, std::move(done))] { saveNow(done); });
}

void X11Clipboard::setText(ChangeCount expected, const QString &text, TextEvents events, Changed done) {
    m_with.loop.post([this, change = Change{expected, textFormats(text), std::move(events),
                                            onMain(m_with.queue, std::move(done))}] { make(change); });
}

void X11Clipboard::setItems(ChangeCount expected, std::vector<ClipboardItem> items, Changed done) {
    m_with.loop.post(
        [this, change = Change{expected, std::move(items), {}, onMain(m_with.queue, std::move(done))}] {
            make(change);
        });
}

void X11Clipboard::handOver(std::function<void()> done) {
    m_with.loop.post([this, done = onMain(m_with.queue, std::move(done))] { handOverNow(done); });
}

// Saving

void X11Clipboard::saveNow(std::function<void(Saved)> done) {
    m_saves.push_back(std::move(done));
    if (m_offer) {
        saved({m_offer->items, m_changes});
        return;
    }
    if (m_saves.size() > 1) // the reader is at it
        return;
    m_with.time.ask([this](xcb_timestamp_t time) {
        m_reader = std::make_unique<SelectionReader>(
            m_with.connection, m_with.loop, m_selection, time, m_with.limits,
            [this, count = m_changes](std::vector<ClipboardItem> items) {
                saved({std::move(items), count});
            });
    });
}

void X11Clipboard::saved(const Saved &contents) {
    m_reader.reset();
    for (auto &done : std::exchange(m_saves, {}))
        done(contents);
}

// Changing

void X11Clipboard::make(Change change) {
    m_with.time.ask([this, change = std::move(change)](xcb_timestamp_t time) mutable {
        std::optional<ChangeCount> count;
        if (change.expected == m_changes && own(time, change))
            count = ++m_changes;
        change.done(count);
    });
}

/// The server refuses a time before that of the last change. So nobody's copy is lost, even if it is made at
/// this very moment.
bool X11Clipboard::own(xcb_timestamp_t time, Change &change) {
    const bool isEmpty = change.items.empty();
    setOwner(isEmpty ? xcb_window_t{XCB_WINDOW_NONE} : m_window, time);
    if (isOwner() == isEmpty)
        return false;
    keepFormer();
    m_lost = {};
    if (isEmpty)
        return true;
    m_offer = SelectionOffer{time, std::move(change.items), {}};
    if (change.events.read)
        m_offer->read = onMain(m_with.queue, std::move(change.events.read));
    m_lost = std::move(change.events.lost);
    return true;
}

void X11Clipboard::setOwner(xcb_window_t window, xcb_timestamp_t time) const {
    xcb_set_selection_owner(m_with.connection.xcb(), window, m_selection, time);
}

bool X11Clipboard::isOwner() const {
    return ownerOf(m_selection, m_with.connection) == m_window;
}

void X11Clipboard::keepFormer() {
    m_former = std::exchange(m_offer, std::nullopt);
    m_formerEnds = m_with.loop.after(kFormerTime, [this] { m_former.reset(); });
}

void X11Clipboard::handOverNow(std::function<void()> done) {
    if (!m_offer || areSecret(m_offer->items))
        done();
    else
        m_manager.send(m_answers.targetsOf(*m_offer), m_offer->since, std::move(done));
}

// What happens on the display

void X11Clipboard::handle(const xcb_generic_event_t &event) {
    if (m_reader)
        m_reader->handle(event);
    m_manager.handle(event);
    const int kind = kindOf(event);
    if (kind == m_newOwner)
        somebodyOwns(event);
    else if (kind == XCB_SELECTION_CLEAR)
        lost(as<xcb_selection_clear_event_t>(event));
    else if (kind == XCB_SELECTION_REQUEST)
        requested(as<xcb_selection_request_event_t>(event));
}

void X11Clipboard::somebodyOwns(const xcb_generic_event_t &event) {
    const auto &change = as<xcb_xfixes_selection_notify_event_t>(event);
    if (change.selection == m_selection && change.owner != m_window)
        ++m_changes;
}

void X11Clipboard::lost(const xcb_selection_clear_event_t &event) {
    if (event.owner != m_window || event.selection != m_selection || !m_offer || isOwner())
        return;
    m_offer.reset();
    m_former.reset();
    if (auto lost = std::exchange(m_lost, {}))
        m_with.queue.post(std::move(lost));
}

void X11Clipboard::requested(const xcb_selection_request_event_t &request) {
    if (request.owner == m_window && request.selection == m_selection)
        m_answers.answer(request, offerAt(request.time));
}

const SelectionOffer *X11Clipboard::offerAt(xcb_timestamp_t time) const {
    if (!m_offer)
        return nullptr;
    const bool wasFormer = time != XCB_CURRENT_TIME && m_former && isBefore(time, m_offer->since) &&
                           !isBefore(time, m_former->since);
    return wasFormer ? &*m_former : &*m_offer;
}

} // namespace velmo::x11
