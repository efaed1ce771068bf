#pragma once

#include "base/last_made.h"
#include "store/preferences.h"
#include "text/snippets.h"
#include "text/vocabulary/vocabulary.h"

#include <QStringList>
#include <memory>

namespace velmo {

/// What the last passes know besides the text.
struct PersonalContext {
    std::shared_ptr<const Vocabulary> vocabulary;
    std::shared_ptr<const Snippets> snippets;
};

/// The person's own words: the dictionary, the learned words of the selected languages after it, and the
/// snippets, as they are stored at the moment. What is made of a stored text is kept until another is stored,
/// since a dictionary can be long. Any thread; `preferences` must outlive it.
class PersonalWords {
public:
    explicit PersonalWords(const Preferences &preferences);

    [[nodiscard]] PersonalContext current() const;

private:
    const Preferences &m_preferences;
    mutable LastMade<QStringList, Vocabulary> m_vocabulary;
    mutable LastMade<QString, Snippets> m_snippets;
};

} // namespace velmo
