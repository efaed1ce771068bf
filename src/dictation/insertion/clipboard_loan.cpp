#include "dictation/insertion/clipboard_loan.h"

namespace velmo {

namespace {

/// Somebody may copy in the very moment between saving and placing; nobody does so three times in a row.
constexpr int kAttempts = 3;

} // namespace

ClipboardLoan::ClipboardLoan(Clipboard &clipboard, Clipboard::TextEvents events)
    : m_clipboard(clipboard), m_events(std::move(events)) {}

void ClipboardLoan::place(const QString &text, Placed done) {
    if (!m_borrowed) {
        saveAndPlace(text, kAttempts, std::move(done));
        return;
    }
    put(text, *m_borrowed, m_lifetime.guard([this, text, done = std::move(done)](bool placed) {
        if (placed)
            done(true);
        else
            saveAndPlace(text, kAttempts, done);
    }));
}

void ClipboardLoan::saveAndPlace(const QString &text, int attemptsLeft, Placed done) {
    if (attemptsLeft == 0) {
        done(false);
        return;
    }
    m_clipboard.save(
        m_lifetime.guard([this, text, attemptsLeft, done = std::move(done)](const Clipboard::Saved &saved) {
            put(text, {saved.items, saved.changeCount}, [this, text, attemptsLeft, done](bool placed) {
                if (placed)
                    done(true);
                else
                    saveAndPlace(text, attemptsLeft - 1, done);
            });
        }));
}

void ClipboardLoan::put(const QString &text, Borrowed onTopOf, Placed done) {
    const auto expected = onTopOf.changeCount;
    m_borrowed.reset();
    m_clipboard.setText(expected, text, eventsOfThisText(),
                        m_lifetime.guard([this, kept = std::move(onTopOf.kept), done = std::move(done)](
                                             std::optional<Clipboard::ChangeCount> count) {
                            if (count)
                                m_borrowed = Borrowed{kept, *count};
                            done(count.has_value());
                        }));
}

Clipboard::TextEvents ClipboardLoan::eventsOfThisText() {
    const auto text = ++m_text;
    return {m_lifetime.guard([this, text](DisplayClient client) {
                if (text == m_text)
                    m_events.read(client);
            }),
            m_lifetime.guard([this, text] {
                if (text != m_text)
                    return;
                m_borrowed.reset();
                m_events.lost();
            })};
}

void ClipboardLoan::giveBack(Done done) {
    if (!m_borrowed) {
        done();
        return;
    }
    const auto expected = m_borrowed->changeCount;
    m_clipboard.setItems(expected, std::move(m_borrowed->kept),
                         [done = std::move(done)](std::optional<Clipboard::ChangeCount>) { done(); });
    m_borrowed.reset();
}

} // namespace velmo
