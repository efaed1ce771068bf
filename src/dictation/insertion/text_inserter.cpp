#include "dictation/insertion/text_inserter.h"

#include "base/log.h"
#include "dictation/insertion/paste_shortcut.h"

#include <utility>

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;

namespace velmo {

namespace {

/// A text stays at least this long after the paste: programs may read it more than once (a product decision).
constexpr auto kSettleTime = 400ms;

/// A busy program may take the paste late; what it then finds must not be the old contents. One that has not
/// read the text after this time will not (a product decision).
constexpr auto kLongestWait = 5000ms;

/// How long the end of the program waits for the insertion under way: longer than the time of settling.
constexpr auto kFinishTime = 1000ms;

/// How long the notice is shown: time to read it twice.
constexpr auto kNoticeTime = 4000ms;

/// Programs in C take NUL for the end of the text.
QString withoutNul(QString text) {
    return text.remove(QChar::Null);
}

} // namespace

TextInserter::TextInserter(const Collaborators &collaborators)
    : m_with(collaborators),
      m_clipboard(m_with.clipboard,
                  {[this](DisplayClient client) { textRead(client); }, [this] { textLost(); }}),
      m_primary(m_with.primarySelection,
                {[this](DisplayClient client) { textRead(client); }, [this] { textLost(); }}) {}

void TextInserter::insert(const QString &text) {
    if (m_finished || text.isEmpty())
        return;
    m_waiting.push_back(withoutNul(text));
    if (!m_runs)
        startNext();
}

void TextInserter::startNext() {
    const QString text = std::move(m_waiting.front());
    m_waiting.pop_front();
    m_runs = true;
    m_pressed = m_settled = m_read = false;
    setNotice({});
    m_clipboard.place(text, m_lifetime.guard([this, text](bool placed) {
        if (placed) {
            findTarget(text);
            return;
        }
        log(LogTag::Insert, u"The clipboard could not be taken, nothing is pasted"_s);
        becomeIdle();
    }));
}

void TextInserter::findTarget(const QString &text) {
    if (!m_with.keys.canInject() || m_with.lock.isLocked()) {
        leaveOnClipboard();
        return;
    }
    m_with.focus.find(m_lifetime.guard([this, text](const std::optional<FocusedWindow> &target) {
        if (target)
            pasteInto(*target, text);
        else
            leaveOnClipboard();
    }));
}

void TextInserter::pasteInto(const FocusedWindow &target, const QString &text) {
    m_target = target.client;
    const auto own = ownPasteShortcut(target.windowClass);
    if (!own) {
        simulatePaste(PasteShortcut::ControlV);
        return;
    }
    // Which of the two a terminal pastes from is for its settings to say.
    m_primary.place(text, [this, shortcut = *own](bool) { simulatePaste(shortcut); });
}

void TextInserter::simulatePaste(PasteShortcut shortcut) {
    m_with.keys.press(shortcut, m_lifetime.guard([this](bool sent) {
        if (sent) {
            pasted();
            return;
        }
        log(LogTag::Insert, u"Failed to create CGEvent"_s);
        leaveOnClipboard();
    }));
}

void TextInserter::pasted() {
    m_pressed = true;
    m_settleTimer = m_with.queue.after(kSettleTime, [this] {
        m_settled = true;
        endIfRead();
    });
    if (m_finished)
        return;
    m_deadline = m_with.queue.after(kLongestWait, [this] {
        log(LogTag::Insert, u"The focused window has not read the text"_s);
        end();
    });
}

void TextInserter::textRead(DisplayClient client) {
    // Clipboard managers read whatever is new; so does a program that watches the clipboard, before the paste.
    if (!m_pressed || client != m_target)
        return;
    m_read = true;
    endIfRead();
}

void TextInserter::textLost() {
    if (m_pressed && !m_clipboard.isActive() && !m_primary.isActive())
        end();
}

void TextInserter::endIfRead() {
    if (m_settled && m_read)
        end();
}

void TextInserter::end() {
    m_settleTimer.reset();
    m_deadline.reset();
    m_pressed = false;
    if (m_waiting.empty())
        restorePasteboard();
    else
        startNext();
}

void TextInserter::restorePasteboard() {
    m_clipboard.giveBack(
        m_lifetime.guard([this] { m_primary.giveBack(m_lifetime.guard([this] { becomeIdle(); })); }));
}

void TextInserter::leaveOnClipboard() {
    m_clipboard.leave();
    m_primary.leave();
    setNotice(tr("Copied - press Ctrl+V"));
    m_noticeTimer = m_with.queue.after(kNoticeTime, [this] { setNotice({}); });
    becomeIdle();
}

void TextInserter::becomeIdle() {
    m_runs = false;
    if (m_finished)
        handOver();
    else if (!m_waiting.empty())
        startNext();
}

// The end of the program

void TextInserter::finish(std::function<void()> done) {
    m_finished = std::move(done);
    m_waiting.clear();
    if (m_runs)
        m_deadline = m_with.queue.after(kFinishTime, [this] { end(); });
    else
        handOver();
}

void TextInserter::handOver() {
    m_deadline.reset();
    m_with.clipboard.handOver(std::exchange(m_finished, [] {}));
}

void TextInserter::setNotice(const QString &notice) {
    if (m_notice == notice)
        return;
    m_notice = notice;
    Q_EMIT noticeChanged();
}

} // namespace velmo
