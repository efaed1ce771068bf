#pragma once

#include "store/preferences.h"
#include "text/snippets.h"
#include "text/vocabulary/vocabulary.h"

#include <QStringList>
#include <memory>
#include <mutex>

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
    /// What was last made of some stored text. What is handed out stays valid when the next takes its place.
    template <class Source, class Made>
    class Last {
    public:
        template <class Make>
        std::shared_ptr<const Made> of(const Source &source, Make make) {
            const std::lock_guard lock(m_mutex);
            if (!m_made || m_source != source) {
                m_made = std::make_shared<const Made>(make());
                m_source = source;
            }
            return m_made;
        }

    private:
        std::mutex m_mutex;
        Source m_source;
        std::shared_ptr<const Made> m_made;
    };

    const Preferences &m_preferences;
    mutable Last<QStringList, Vocabulary> m_vocabulary;
    mutable Last<QString, Snippets> m_snippets;
};

} // namespace velmo
