#pragma once

#include "base/lifetime.h"
#include "store/dictionary_words.h"
#include "ui/models/list_page.h"
#include "ui/models/row_model.h"

#include <QtQml/qqmlregistration.h>

namespace velmo {

/// A custom word as the list shows it.
struct WordRow {
    Q_GADGET
    Q_PROPERTY(QString word MEMBER word)

public:
    QString word;

    [[nodiscard]] const QString &key() const { return word; }
    bool operator==(const WordRow &) const = default;
};

/// The learned words of one language.
struct LearnedWordGroup {
    Q_GADGET
    QML_VALUE_TYPE(learnedWordGroup)
    Q_PROPERTY(QString heading MEMBER heading)
    Q_PROPERTY(QStringList words MEMBER words)

public:
    QString heading; ///< The name of the language in capitals.
    QStringList words;

    bool operator==(const LearnedWordGroup &) const = default;
};

/// The dictionary page: custom words that can be added, found and removed, and the learned words by language. Every
/// change applies to the dictionary as it is stored at that moment and is then pushed to the account; what another
/// page, process or a synchronisation changes appears by itself. Main thread.
class DictionaryView final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The application makes it.")
    Q_PROPERTY(QString countText READ countText NOTIFY wordsChanged)
    Q_PROPERTY(QString emptyText READ emptyText NOTIFY searchTextChanged)
    Q_PROPERTY(QAbstractItemModel *filteredWords READ filteredWords CONSTANT)
    Q_PROPERTY(QString newWord READ newWord WRITE setNewWord NOTIFY newWordChanged)
    Q_PROPERTY(bool canAdd READ canAdd NOTIFY newWordChanged)
    Q_PROPERTY(QString searchText READ searchText WRITE setSearchText NOTIFY searchTextChanged)
    Q_PROPERTY(QList<velmo::LearnedWordGroup> learnedWords READ learnedWords NOTIFY learnedWordsChanged)

public:
    explicit DictionaryView(const ListPage &page);

    /// In stored order.
    [[nodiscard]] const QStringList &words() const { return m_words; }
    /// How many there are, also while a search shows fewer.
    [[nodiscard]] QString countText() const;
    /// What stands where no words are shown.
    [[nodiscard]] QString emptyText() const;

    /// The words that contain the search text, in ascending order of their code points.
    [[nodiscard]] RowModel<WordRow> *filteredWords() { return &m_filteredWords; }

    /// The text of the input field.
    [[nodiscard]] const QString &newWord() const { return m_newWord; }
    void setNewWord(const QString &text);
    /// Whether there is more than blanks in the field.
    [[nodiscard]] bool canAdd() const;

    [[nodiscard]] const QString &searchText() const { return m_searchText; }
    void setSearchText(const QString &text);

    /// By language code.
    [[nodiscard]] const QList<LearnedWordGroup> &learnedWords() const { return m_learnedWords; }

    /// Adds what stands in the input field, trimmed of blanks, and clears the field. A word that is there already, or
    /// that could not be stored, stays in the field.
    Q_INVOKABLE void addWord();

    /// Removes every copy of exactly that word, and offers it back for a few seconds.
    Q_INVOKABLE void removeWord(const QString &word);

Q_SIGNALS:
    void wordsChanged();
    void newWordChanged();
    void searchTextChanged();
    void learnedWordsChanged();

private:
    void restoreWord(const QString &word, qsizetype place);
    void loadWords();
    void loadLearnedWords();
    void filter();
    void push();

    ListPage m_page;
    QStringList m_words;
    QStringList m_wordsInOrder;
    QString m_newWord;
    QString m_searchText;
    QList<LearnedWordGroup> m_learnedWords;
    RowModel<WordRow> m_filteredWords;
    Lifetime m_lifetime;
};

} // namespace velmo
