#pragma once

#include "base/lifetime.h"
#include "platform/clipboard.h"

#include <functional>
#include <optional>
#include <vector>

namespace velmo {

/// The clipboard, borrowed: while a text of ours stands there, what it held is kept, and it is given back
/// afterwards, unless somebody else has changed the clipboard by then. Main thread.
class ClipboardLoan {
public:
    using Done = std::function<void()>;
    using Placed = std::function<void(bool placed)>;

    /// `events` are about the text placed last; `read` and `lost` both have to be there.
    ClipboardLoan(Clipboard &clipboard, Clipboard::TextEvents events);

    /// Puts the text there. A text of ours that still stands there makes room; what was kept for it is kept
    /// on. `done` tells whether the text is there now.
    void place(const QString &text, Placed done);

    /// Gives back what was kept. Nothing happens when nothing is borrowed.
    void giveBack(Done done);

    /// Lets the text stay and forgets what was kept.
    void leave() { m_borrowed.reset(); }

    /// Whether a text of ours stands there, as far as is known.
    [[nodiscard]] bool isActive() const { return m_borrowed.has_value(); }

private:
    struct Borrowed {
        std::vector<ClipboardItem> kept;
        Clipboard::ChangeCount changeCount;
    };

    void saveAndPlace(const QString &text, int attemptsLeft, Placed done);
    void put(const QString &text, Borrowed onTopOf, Placed done);
    [[nodiscard]] Clipboard::TextEvents eventsOfThisText();

    Clipboard &m_clipboard;
    Clipboard::TextEvents m_events;
    std::optional<Borrowed> m_borrowed;
    quint64 m_text = 0; ///< Counts the texts, so that events of earlier ones are told apart.
    Lifetime m_lifetime;
};

} // namespace velmo
