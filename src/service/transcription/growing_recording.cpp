#include "service/transcription/growing_recording.h"

#include <algorithm>
#include <cstring>

namespace velmo {

namespace {

/// Of a WAVE file as the recorder writes it.
constexpr qint64 kHeaderSize = 44;

qsizetype moveOut(QByteArray &from, char *into, qsizetype most) {
    const qsizetype count = std::min(from.size(), most);
    std::memcpy(into, from.constData(), static_cast<size_t>(count));
    from.remove(0, count);
    return count;
}

} // namespace

qsizetype GrowingRecording::read(char *into, qsizetype most) {
    if (!m_start.isEmpty())
        return moveOut(m_start, into, most);
    const bool isWhole = wholeSince().has_value(); // asked first: what is written until then is read below
    if (m_file->pos() == 0 && !isWhole && m_file->size() < kHeaderSize)
        return 0;
    const qint64 count = std::max<qint64>(m_file->read(into, most), 0);
    if (count == 0 && isWhole)
        return moveOut(m_end, into, most);
    return count;
}

std::optional<std::chrono::steady_clock::time_point> GrowingRecording::wholeSince() const {
    const Moment moment = m_wholeSince;
    return moment == Moment() ? std::nullopt : std::optional(moment);
}

} // namespace velmo
