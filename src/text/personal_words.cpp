#include "text/personal_words.h"

#include "store/dictionary_words.h"
#include "store/languages.h"
#include "store/preference_keys.h"

namespace velmo {

PersonalWords::PersonalWords(const Preferences &preferences) : m_preferences(preferences) {}

PersonalContext PersonalWords::current() const {
    const QString languages = selectedLanguagesText(m_preferences);
    const QStringList storedWords = {m_preferences.string(keys::dictionary).value_or(QString()),
                                     m_preferences.string(keys::learnedWords).value_or(QString()), languages};
    const QString storedSnippets = m_preferences.string(keys::snippets).value_or(QString());

    return {
        m_vocabulary.of(storedWords,
                        [&] {
                            return Vocabulary(dictionaryWords(m_preferences) +
                                              learnedWords(m_preferences, languageCodes(languages)));
                        }),
        m_snippets.of(storedSnippets, [&] { return compiledSnippets(parseUsableSnippets(storedSnippets)); })};
}

} // namespace velmo
