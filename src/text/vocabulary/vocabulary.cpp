#include "text/vocabulary/vocabulary.h"

#include "base/canonical_form.h"
#include "base/case_mapping.h"
#include "base/characters.h"
#include "text/vocabulary/edit_distance.h"

#include <bit>

namespace velmo {

namespace {

constexpr char32_t kFirstCompoundLetter = 0x110000; // behind the last code point
constexpr char32_t kUnknownLetter = 0xFFFFFFFF;     // a compound letter that no word of the list has

/// Neither case nor the way a letter is written counts.
QString foldedForm(QStringView word) {
    return composed(lowerCased(word));
}

/// The letters of a word as a set of 64 bits. An edit takes at most one letter away and adds at most one, so
/// two words within n edits differ in at most 2n bits.
quint64 signatureOf(const std::vector<char32_t> &letters) {
    quint64 signature = 0;
    for (const char32_t letter : letters)
        signature |= quint64(1) << (letter % 64);
    return signature;
}

/// A single slip is likely in any word; two only in a long one, where enough of the word is left to be sure.
int largestDistance(std::size_t characterCount) {
    if (characterCount < 5)
        return 0;
    return characterCount < 8 ? 1 : 2;
}

} // namespace

/// The best candidate so far; a later one has to be nearer, or as near and earlier in the list.
struct Vocabulary::Best {
    int limit;
    qsizetype place = -1;
    int distance = 0;

    void consider(int candidateDistance, qsizetype candidatePlace) {
        if (candidateDistance < 1 || candidateDistance > limit)
            return;
        if (place >= 0 && candidateDistance == distance && candidatePlace > place)
            return;
        place = candidatePlace;
        distance = candidateDistance;
        limit = candidateDistance;
    }
};

Vocabulary::Vocabulary(const QStringList &words) : m_words(words) {
    m_letters.reserve(static_cast<std::size_t>(words.size()));
    for (const QString &word : words)
        add(word);
}

void Vocabulary::add(QStringView word) {
    const QString folded = foldedForm(word);
    Letters letters;
    for (const QStringView character : characters(folded))
        letters.push_back(ensureLetterOf(character));
    SameLength &bucket = m_byLength[letters.size()];
    bucket.signatures.push_back(signatureOf(letters));
    bucket.words.push_back(static_cast<qsizetype>(m_letters.size()));
    m_letters.push_back(std::move(letters));
}

char32_t Vocabulary::ensureLetterOf(QStringView character) {
    char32_t letter = letterOf(character);
    if (letter == kUnknownLetter) {
        letter = kFirstCompoundLetter + static_cast<char32_t>(m_compoundLetters.size());
        m_compoundLetters.insert(character.toString(), letter);
    }
    return letter;
}

char32_t Vocabulary::letterOf(QStringView character) const {
    if (character.size() == 1)
        return character.front().unicode();
    const bool isPair =
        character.size() == 2 && character[0].isHighSurrogate() && character[1].isLowSurrogate();
    if (isPair)
        return QChar::surrogateToUcs4(character[0], character[1]);
    return m_compoundLetters.value(character.toString(), kUnknownLetter);
}

Vocabulary::Letters Vocabulary::lettersOf(QStringView word) const {
    const QString folded = foldedForm(word);
    Letters letters;
    for (const QStringView character : characters(folded))
        letters.push_back(letterOf(character));
    return letters;
}

void Vocabulary::search(const SameLength &bucket, const Letters &letters, quint64 signature,
                        Best &best) const {
    for (std::size_t at = 0; at < bucket.signatures.size(); ++at) {
        if (std::popcount(bucket.signatures[at] ^ signature) > 2 * best.limit)
            continue;
        const qsizetype place = bucket.words[at];
        best.consider(editDistance(letters, m_letters[static_cast<std::size_t>(place)], best.limit), place);
    }
}

std::optional<Vocabulary::Correction> Vocabulary::correctionOf(QStringView word) const {
    const Letters letters = lettersOf(word);
    Best best{largestDistance(letters.size())};
    if (best.limit == 0)
        return std::nullopt;
    const quint64 signature = signatureOf(letters);
    const auto limit = static_cast<std::size_t>(best.limit);
    const auto end = m_byLength.upper_bound(letters.size() + limit);
    for (auto bucket = m_byLength.lower_bound(letters.size() - limit); bucket != end; ++bucket)
        search(bucket->second, letters, signature, best);
    if (best.place < 0)
        return std::nullopt;
    return Correction{m_words[best.place], best.distance};
}

} // namespace velmo
