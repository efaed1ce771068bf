#pragma once

#include <QHash>
#include <QStringList>
#include <map>
#include <optional>
#include <vector>

namespace velmo {

/// The words a person's dictations are corrected to, made ready to be searched. Immutable, any thread.
///
/// Words are compared by characters, whatever their case; canonically equal letters are equal. A dictionary
/// of 100,000 words is searched for each word of a dictation, so nearly all candidates are ruled out by
/// length and by a signature of their letters before a distance is computed.
class Vocabulary {
public:
    /// Of words equally far away the one earlier in the list wins; duplicates do no harm.
    explicit Vocabulary(const QStringList &words);

    struct Correction {
        QString word; ///< As stored.
        int distance;
    };

    [[nodiscard]] bool isEmpty() const { return m_words.isEmpty(); }

    /// The nearest word that is at least one edit away and near enough: one edit for words of five to seven
    /// characters, two from eight on; shorter words are never corrected.
    [[nodiscard]] std::optional<Correction> correctionOf(QStringView word) const;

private:
    using Letters = std::vector<char32_t>;

    /// The words of one length, side by side so that scanning the signatures is fast.
    struct SameLength {
        std::vector<quint64> signatures;
        std::vector<qsizetype> words; ///< Places in the list.
    };
    struct Best;

    [[nodiscard]] char32_t letterOf(QStringView character) const;
    [[nodiscard]] Letters lettersOf(QStringView word) const;
    void add(QStringView word);
    /// The letter of a character of the list; a compound one that is new is given a number.
    [[nodiscard]] char32_t ensureLetterOf(QStringView character);
    void search(const SameLength &bucket, const Letters &letters, quint64 signature, Best &best) const;

    QStringList m_words;
    std::vector<Letters> m_letters; ///< Of each word.
    std::map<std::size_t, SameLength> m_byLength;
    QHash<QString, char32_t> m_compoundLetters; ///< Characters of several code points, numbered.
};

} // namespace velmo
