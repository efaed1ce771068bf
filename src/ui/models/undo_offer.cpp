#include "ui/models/undo_offer.h"

#include <utility>

namespace velmo {

namespace {

/// Longer than anybody rests on a notice.
constexpr std::chrono::hours kHeld{24};

} // namespace

void UndoOffer::offer(const QString &text, std::function<void()> undo) {
    m_text = text;
    m_undo = std::move(undo);
    startTimer(duration);
    Q_EMIT changed();
}

void UndoOffer::undo() {
    const auto undo = std::exchange(m_undo, nullptr);
    dismiss();
    if (undo)
        undo();
}

void UndoOffer::dismiss() {
    if (!isOffered())
        return;
    m_timer.reset();
    m_undo = nullptr;
    Q_EMIT changed();
}

void UndoOffer::hold(bool held) {
    if (isOffered())
        startTimer(held ? std::chrono::milliseconds(kHeld) : duration);
}

void UndoOffer::startTimer(std::chrono::milliseconds duration) {
    m_timer = m_queue.after(duration, [this] { dismiss(); });
}

} // namespace velmo
