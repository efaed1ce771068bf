#include "ui/models/undo_offer.h"

#include <utility>

namespace velmo {

namespace {

/// Longer than anybody rests on a notice.
constexpr std::chrono::hours kHeld{24};

} // namespace

void UndoOffer::offer(const QString &text, std::function<void()> undo) {
    m_deletions.push_back({text, std::move(undo)});
    m_text = text;
    startTimer(duration);
    Q_EMIT changed();
}

void UndoOffer::undo() {
    if (!isOffered())
        return;
    const Deletion last = std::move(m_deletions.back());
    m_deletions.pop_back();
    if (m_deletions.empty()) {
        withdraw();
    } else {
        m_text = m_deletions.back().text;
        startTimer(duration);
        Q_EMIT changed();
    }
    last.undo();
}

void UndoOffer::withdraw() {
    m_timer.reset();
    m_deletions.clear();
    Q_EMIT changed();
}

void UndoOffer::hold(bool held) {
    if (isOffered())
        startTimer(held ? std::chrono::milliseconds(kHeld) : duration);
}

void UndoOffer::startTimer(std::chrono::milliseconds duration) {
    m_timer = m_queue.after(duration, [this] { withdraw(); });
}

} // namespace velmo
