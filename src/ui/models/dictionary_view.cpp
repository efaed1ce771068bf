#include "ui/models/dictionary_view.h"

#include "base/case_mapping.h"
#include "base/characters.h"
#include "base/collation.h"
#include "service/sync/list_pushes.h"
#include "service/wire/session_interfaces.h"
#include "store/languages.h"
#include "store/preference_keys.h"
#include "store/preference_watch.h"
#include "ui/models/undo_offer.h"

namespace velmo {

DictionaryView::DictionaryView(const ListPage &page) : m_page(page) {
    m_page.watch.follow(keys::dictionary, this, [this] { loadWords(); });
    m_page.watch.follow(keys::learnedWords, this, [this] { loadLearnedWords(); });
    loadWords();
    loadLearnedWords();
}

QString DictionaryView::countText() const {
    return tr("%1 words").arg(m_words.size());
}

QString DictionaryView::emptyText() const {
    return m_searchText.isEmpty() ? tr("No custom words yet") : tr("No matches");
}

void DictionaryView::setNewWord(const QString &text) {
    if (m_newWord == text)
        return;
    m_newWord = text;
    Q_EMIT newWordChanged();
}

bool DictionaryView::canAdd() const {
    return !trimmedOfBlanks(m_newWord).isEmpty();
}

void DictionaryView::setSearchText(const QString &text) {
    if (m_searchText == text)
        return;
    m_searchText = text;
    filter();
    Q_EMIT searchTextChanged();
}

void DictionaryView::addWord() {
    const QString word = trimmedOfBlanks(m_newWord).toString();
    if (word.isEmpty())
        return;
    const WordAddition addition = addDictionaryWord(m_page.preferences, word);
    loadWords();
    if (addition != WordAddition::Added)
        return;
    setNewWord(QString());
    push();
}

void DictionaryView::removeWord(const QString &word) {
    const qsizetype place = m_words.indexOf(word);
    if (place < 0)
        return;
    removeDictionaryWord(m_page.preferences, word);
    loadWords();
    push();
    m_page.undoOffer.offer(tr("“%1” removed").arg(word),
                           m_lifetime.guard([this, word, place] { restoreWord(word, place); }));
}

void DictionaryView::restoreWord(const QString &word, qsizetype place) {
    restoreDictionaryWord(m_page.preferences, word, place);
    loadWords();
    push();
}

void DictionaryView::loadWords() {
    QStringList words = dictionaryWords(m_page.preferences);
    if (words == m_words)
        return;
    m_words = std::move(words);
    m_wordsInOrder = inOrder(m_words);
    filter();
    Q_EMIT wordsChanged();
}

void DictionaryView::loadLearnedWords() {
    QList<LearnedWordGroup> groups;
    for (const auto &[code, words] : velmo::learnedWords(m_page.preferences))
        groups.append({upperCased(languageName(code)), words});
    if (groups == m_learnedWords)
        return;
    m_learnedWords = groups;
    Q_EMIT learnedWordsChanged();
}

void DictionaryView::filter() {
    CollationSearch search(m_page.collation, m_searchText);
    QList<WordRow> found;
    for (const QString &word : std::as_const(m_wordsInOrder)) {
        if (search.isPartOf(word))
            found.append({word});
    }
    m_filteredWords.setRows(found);
}

void DictionaryView::push() {
    if (m_page.account.isLoggedIn())
        m_page.pushes.pushDictionary();
}

} // namespace velmo
