#pragma once

#include "base/main_queue.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>
#include <functional>
#include <vector>

namespace velmo {

/// For a few seconds after something was deleted: what was deleted, and the way back. What is deleted meanwhile comes
/// back first, and then what was deleted before. Main thread.
class UndoOffer final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The application makes it.")
    Q_PROPERTY(bool isOffered READ isOffered NOTIFY changed)
    Q_PROPERTY(QString text READ text NOTIFY changed)

public:
    /// How long the offer stands: time to read it, move the hand and press (a product decision).
    static constexpr std::chrono::seconds duration{6};

    /// The queue outlives the offer.
    explicit UndoOffer(MainQueue &queue) : m_queue(queue) {}

    [[nodiscard]] bool isOffered() const { return m_timer != nullptr; }
    /// What was deleted, as a sentence. Stays while the notice leaves.
    [[nodiscard]] const QString &text() const { return m_text; }

    void offer(const QString &text, std::function<void()> undo);

    /// Brings back what was deleted last; nothing when nothing is offered any more.
    Q_INVOKABLE void undo();
    /// Lets the offer stand while the person has the pointer or the keyboard on it; from the end of that, it stands
    /// its full time again.
    Q_INVOKABLE void hold(bool held);

Q_SIGNALS:
    void changed();

private:
    struct Deletion {
        QString text;
        std::function<void()> undo;
    };

    void startTimer(std::chrono::milliseconds duration);
    void withdraw();

    MainQueue &m_queue;
    MainQueue::Timer m_timer; ///< Runs exactly while something is offered.
    QString m_text;
    std::vector<Deletion> m_deletions; ///< The latest last.
};

} // namespace velmo
