#pragma once

#include "base/lifetime.h"
#include "base/main_queue.h"
#include "dictation/insertion/clipboard_loan.h"
#include "dictation/insertion/text_insertion.h"
#include "platform/focused_window.h"
#include "platform/key_injector.h"
#include "platform/session_lock.h"

#include <QObject>
#include <QString>
#include <deque>
#include <functional>
#include <optional>

namespace velmo {

/// Puts text at the cursor of whatever application has focus, by pasting: the text is placed on the clipboard,
/// the paste shortcut pressed, and what the clipboard held is put back once the application has read the text.
/// Insertions run one after another; one that waits takes the place of the text before it, so that what the
/// person had copied is put back after the last of them.
///
/// Where no keys can be pressed, or no window of the person would get them, the text stays on the clipboard, and a notice says
/// so. Main thread.
class TextInserter final : public QObject, public TextInsertion {
    Q_OBJECT
    Q_PROPERTY(QString notice READ notice NOTIFY noticeChanged)

public:
    /// Whom the inserter works with; all of them outlive it.
    struct Collaborators {
        MainQueue &queue;
        Clipboard &clipboard;
        Clipboard &primarySelection; ///< Terminals paste from there.
        KeyInjector &keys;
        FocusedWindowFinder &focus;
        const SessionLock &lock; ///< Behind it, keys would go to whatever asks for the password.
    };

    explicit TextInserter(const Collaborators &collaborators);

    void insert(const QString &text) override;

    /// For the end of the program: drops what waits, gives the insertion under way a second to end, and has
    /// the desktop keep what is on the clipboard then. `done` comes once, within about two seconds.
    void finish(std::function<void()> done);

    /// What the person has to do about the last text, for as long as it is to be shown; null when nothing.
    [[nodiscard]] const QString &notice() const { return m_notice; }

Q_SIGNALS:
    void noticeChanged();

private:
    void startNext();
    void findTarget(const QString &text);
    void pasteInto(const FocusedWindow &target, const QString &text);
    void simulatePaste(PasteShortcut shortcut);
    void pasted();
    void textRead(DisplayClient client);
    void textLost();
    void endIfRead();
    void end();
    void restorePasteboard();
    void leaveOnClipboard();
    void becomeIdle();
    void handOver();
    void setNotice(const QString &notice);

    Collaborators m_with;
    ClipboardLoan m_clipboard;
    ClipboardLoan m_primary;
    std::deque<QString> m_waiting;
    QString m_notice;
    std::function<void()> m_finished; ///< Set once the program ends.
    bool m_runs = false;              ///< An insertion is under way, up to and including the restoring.

    // Of the insertion under way:
    DisplayClient m_target{};
    bool m_pressed = false; ///< The shortcut was pressed.
    bool m_settled = false; ///< The time for which every text stays has passed.
    bool m_read = false;    ///< The target has read the text.

    MainQueue::Timer m_settleTimer;
    MainQueue::Timer m_deadline;
    MainQueue::Timer m_noticeTimer;
    Lifetime m_lifetime;
};

} // namespace velmo
