#include "platform/linux/x11/insertion/selection_reader.h"

#include "base/log.h"
#include "platform/linux/x11/insertion/selection_formats.h"

#include <algorithm>
#include <array>
#include <numeric>
#include <span>

using namespace Qt::StringLiterals;

namespace velmo::x11 {

namespace {

std::span<const xcb_atom_t> atomsOf(const xcb_get_property_reply_t &property) {
    if (property.format != 32)
        return {};
    return {static_cast<const xcb_atom_t *>(xcb_get_property_value(&property)), property.value_len};
}

QByteArray bytesOf(const xcb_get_property_reply_t &property) {
    return {static_cast<const char *>(xcb_get_property_value(&property)),
            xcb_get_property_value_length(&property)};
}

/// Whether the contents are the number of something that the server holds for their owner, and that ends with
/// it, such as a picture drawn there.
bool isResource(const xcb_get_property_reply_t &property) {
    constexpr std::array<xcb_atom_t, 6> kResources = {XCB_ATOM_BITMAP,   XCB_ATOM_COLORMAP, XCB_ATOM_CURSOR,
                                                      XCB_ATOM_DRAWABLE, XCB_ATOM_PIXMAP,   XCB_ATOM_WINDOW};
    return property.format == 32 &&
           std::find(kResources.begin(), kResources.end(), property.type) != kResources.end();
}

} // namespace

SelectionReader::SelectionReader(Connection &connection, Loop &loop, xcb_atom_t selection,
                                 xcb_timestamp_t time, ClipboardSaveLimits limits, Done done)
    : m_connection(connection),
      m_selection(selection),
      m_property(connection.atom("VELMO_SELECTION")),
      m_time(time),
      m_bytesLeft(limits.bytes),
      m_done(std::move(done)),
      m_deadline(loop.after(limits.time, [this] { outOfTime(); })) {
    openWindow();
    request(m_connection.atom("TARGETS"));
}

SelectionReader::~SelectionReader() {
    xcb_destroy_window(m_connection.xcb(), m_window);
}

void SelectionReader::openWindow() {
    m_window = m_connection.createWindow(XCB_EVENT_MASK_PROPERTY_CHANGE);
}

void SelectionReader::request(xcb_atom_t target) {
    m_asked = target;
    m_inPieces = false;
    xcb_convert_selection(m_connection.xcb(), m_window, m_selection, target, m_property, m_time);
}

void SelectionReader::handle(const xcb_generic_event_t &event) {
    if (kindOf(event) == XCB_SELECTION_NOTIFY) {
        const auto &answer = as<xcb_selection_notify_event_t>(event);
        if (answer.requestor == m_window && answer.selection == m_selection && answer.target == m_asked)
            answered(answer);
    } else if (kindOf(event) == XCB_PROPERTY_NOTIFY) {
        const auto &change = as<xcb_property_notify_event_t>(event);
        if (m_inPieces && change.window == m_window && change.atom == m_property &&
            change.state == XCB_PROPERTY_NEW_VALUE)
            pieceArrived();
    }
}

void SelectionReader::answered(const xcb_selection_notify_event_t &answer) {
    const Property property = answer.property == XCB_ATOM_NONE ? nullptr : takeProperty();
    if (m_listed && property)
        begin(*property);
    else if (m_listed)
        readNext();
    else if (property)
        takeTargets(*property);
    else
        // Owners that cannot list their formats are old ones and know plain text.
        offer({m_connection.atom("UTF8_STRING"), XCB_ATOM_STRING});
}

/// Takes the property's value and, by removing it, tells the owner so. One that is larger than what may be
/// kept stays.
SelectionReader::Property SelectionReader::takeProperty() const {
    const auto units = static_cast<uint32_t>(m_bytesLeft / 4 + 1);
    const auto cookie = xcb_get_property(m_connection.xcb(), /*delete=*/1, m_window, m_property,
                                         XCB_GET_PROPERTY_TYPE_ANY, 0, units);
    return Property(xcb_get_property_reply(m_connection.xcb(), cookie, nullptr));
}

void SelectionReader::takeTargets(const xcb_get_property_reply_t &list) {
    std::vector<xcb_atom_t> targets;
    for (const xcb_atom_t target : atomsOf(list)) {
        const bool isNew = std::find(targets.begin(), targets.end(), target) == targets.end();
        if (isNew && isContents(m_connection.nameOf(target)))
            targets.push_back(target);
    }
    offer(targets);
}

void SelectionReader::offer(const std::vector<xcb_atom_t> &targets) {
    m_listed = true;
    for (const xcb_atom_t target : targets)
        m_formats.push_back({target, std::nullopt});
    m_order.resize(m_formats.size());
    std::iota(m_order.begin(), m_order.end(), 0);
    std::stable_partition(m_order.begin(), m_order.end(), [this](std::size_t index) {
        return isReadFirst(m_connection.nameOf(m_formats[index].target));
    });
    readNext();
}

void SelectionReader::readNext() {
    if (m_next == m_order.size()) {
        finish();
        return;
    }
    request(m_formats[m_order[m_next++]].target);
}

void SelectionReader::begin(const xcb_get_property_reply_t &announcement) {
    m_item = {QString::fromLatin1(m_connection.nameOf(m_asked)), {}};
    if (announcement.type == m_connection.atom("INCR")) {
        m_inPieces = true;
        return;
    }
    if (isResource(announcement))
        readNext();
    else if (append(announcement))
        complete();
    else
        giveUpFormat();
}

void SelectionReader::pieceArrived() {
    const Property piece = takeProperty();
    if (!piece || piece->value_len == 0)
        complete();
    else if (!append(*piece))
        giveUpFormat();
}

/// False when the piece is more than may be kept.
bool SelectionReader::append(const xcb_get_property_reply_t &piece) {
    if (piece.bytes_after > 0 || xcb_get_property_value_length(&piece) > m_bytesLeft)
        return false;
    const QByteArray type = m_connection.nameOf(piece.type);
    m_item.dataType = piece.type == m_asked ? QString() : QString::fromLatin1(type);
    m_item.unitBits = piece.format;
    m_item.data += bytesOf(piece);
    m_bytesLeft -= xcb_get_property_value_length(&piece);
    return true;
}

void SelectionReader::complete() {
    m_formats[m_order[m_next - 1]].item = std::move(m_item);
    readNext();
}

/// The owner may be in the middle of it; without the window it sees that nobody listens any more.
void SelectionReader::giveUpFormat() {
    ++m_leftOut;
    m_bytesLeft += m_item.data.size();
    xcb_destroy_window(m_connection.xcb(), m_window);
    openWindow();
    readNext();
}

void SelectionReader::outOfTime() {
    if (m_listed)
        m_leftOut += m_order.size() + 1 - m_next; // with the one under way
    else
        log(LogTag::Insert, u"The clipboard could not be kept: its owner does not answer"_s);
    finish();
}

void SelectionReader::finish() {
    m_deadline.reset();
    if (m_leftOut > 0)
        log(LogTag::Insert,
            u"The clipboard could be kept only in part: %1 of %2 formats are missing"_s.arg(m_leftOut).arg(
                m_formats.size()));
    std::vector<ClipboardItem> items;
    for (Format &format : m_formats) {
        if (format.item)
            items.push_back(std::move(*format.item));
    }
    const Done done = std::move(m_done);
    done(std::move(items));
}

} // namespace velmo::x11
