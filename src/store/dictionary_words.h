#pragma once

#include "store/preferences.h"

#include <QStringList>
#include <map>

/// The stored forms of the personal dictionary and of the learned words, read at the moment of use.
namespace velmo {

/// The words of a dictionary in its stored form, [{"word":"Sjur"},{"word":"Equinor"}], in list order. Objects
/// without a string "word" are passed over; a text that is no array of objects holds no words.
[[nodiscard]] QStringList parseDictionary(const QString &stored);

/// The stored form of a list of words.
[[nodiscard]] QString serialiseDictionary(const QStringList &words);

/// Learned words by language code, in stored order.
using LearnedWords = std::map<QString, QStringList>;

/// Learned words in their stored form, {"no":["digg","gira"],"sv":["fika"]}. Where any value is no array of
/// strings, nothing is learned.
[[nodiscard]] LearnedWords parseLearnedWords(const QString &stored);

/// The words of the stored dictionary.
[[nodiscard]] QStringList dictionaryWords(const Preferences &preferences);

enum class WordAddition {
    Added,
    AlreadyThere, ///< A word of exactly the same letters is in the dictionary; nothing changed.
    NotStored,    ///< The preferences could not be written.
};

/// Puts a word at the end of the stored dictionary.
WordAddition addDictionaryWord(Preferences &preferences, const QString &word);

/// Takes every copy of exactly that word out of the stored dictionary.
void removeDictionaryWord(Preferences &preferences, const QString &word);

/// Puts a removed word back to its place in the stored dictionary, or to the end where that is shorter now. One that is
/// there already stays where it is.
void restoreDictionaryWord(Preferences &preferences, const QString &word, qsizetype place);

/// All learned words, by language code.
[[nodiscard]] LearnedWords learnedWords(const Preferences &preferences);

/// The learned words of the given languages, in the order of the languages. The codes themselves are no
/// words.
[[nodiscard]] QStringList learnedWords(const Preferences &preferences, const QStringList &languages);

} // namespace velmo
