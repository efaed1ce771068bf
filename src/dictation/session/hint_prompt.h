#pragma once

#include "base/last_made.h"
#include "store/preferences.h"

#include <QStringList>
#include <optional>

namespace velmo {

/// The words the speech model should expect, joined with ", " in ascending order of code points: the words of the
/// dictionary (without those that are listed only for languages not among the given ones) and the learned words of the
/// given languages. Canonically equal words count once. Reads the preferences afresh each time; what was made of a long
/// dictionary is kept until another is stored. Any thread; `preferences` must outlive it.
class HintPrompt {
public:
    explicit HintPrompt(const Preferences &preferences) : m_preferences(preferences) {}

    /// Nothing, and no log line, for fewer than 3 words: so few invite the model to echo them.
    [[nodiscard]] std::optional<QString> current(const QStringList &languages) const;

private:
    struct Words {
        std::size_t count;
        QString joined;
    };
    [[nodiscard]] Words wordsFor(const QStringList &languages) const;

    const Preferences &m_preferences;
    mutable LastMade<QStringList, Words> m_words;
};

} // namespace velmo
