#include "store/dictionary_words.h"

#include "base/json.h"
#include "store/preference_keys.h"

#include <algorithm>

namespace velmo {

namespace {

constexpr QLatin1StringView kWord{"word"};

/// The strings of an array that holds nothing else.
std::optional<QStringList> strings(const QJsonArray &array) {
    QStringList list;
    for (const QJsonValueConstRef element : array) {
        if (!element.isString())
            return std::nullopt;
        list.append(element.toString());
    }
    return list;
}

/// The stored text of a list, whatever stands in its place.
QString textOf(const std::optional<PreferenceValue> &stored) {
    const auto *text = stored ? std::get_if<QString>(&*stored) : nullptr;
    return text ? *text : QString();
}

} // namespace

QStringList parseDictionary(const QString &stored) {
    const auto objects = json::arrayOfObjects(stored.toUtf8());
    if (!objects)
        return {};
    QStringList words;
    words.reserve(objects->size());
    for (const QJsonValueConstRef element : *objects) {
        if (auto word = json::string(element.toObject(), kWord))
            words.append(std::move(*word));
    }
    return words;
}

QString serialiseDictionary(const QStringList &words) {
    QJsonArray objects;
    for (const QString &word : words)
        objects.append(QJsonObject{{kWord, word}});
    return QString::fromUtf8(json::compact(objects));
}

LearnedWords parseLearnedWords(const QString &stored) {
    const QJsonObject object = json::object(stored.toUtf8()).value_or(QJsonObject());
    LearnedWords learned;
    for (auto member = object.begin(); member != object.end(); ++member) {
        auto words = member.value().isArray() ? strings(member.value().toArray()) : std::nullopt;
        if (!words)
            return {};
        learned.emplace(member.key(), std::move(*words));
    }
    return learned;
}

QStringList dictionaryWords(const Preferences &preferences) {
    return parseDictionary(preferences.string(keys::dictionary).value_or(QString()));
}

WordAddition addDictionaryWord(Preferences &preferences, const QString &word) {
    auto addition = WordAddition::Added;
    const bool stored = preferences.change(
        keys::dictionary, [&](const std::optional<PreferenceValue> &value) -> std::optional<PreferenceValue> {
            QStringList words = parseDictionary(textOf(value));
            if (words.contains(word)) {
                addition = WordAddition::AlreadyThere;
                return value;
            }
            words.append(word);
            return serialiseDictionary(words);
        });
    return stored ? addition : WordAddition::NotStored;
}

void removeDictionaryWord(Preferences &preferences, const QString &word) {
    preferences.change(keys::dictionary, [&](const std::optional<PreferenceValue> &value) {
        QStringList words = parseDictionary(textOf(value));
        words.removeAll(word);
        return PreferenceValue(serialiseDictionary(words));
    });
}

void restoreDictionaryWord(Preferences &preferences, const QString &word, qsizetype place) {
    preferences.change(keys::dictionary, [&](const std::optional<PreferenceValue> &value) {
        QStringList words = parseDictionary(textOf(value));
        if (!words.contains(word))
            words.insert(std::clamp<qsizetype>(place, 0, words.size()), word);
        return PreferenceValue(serialiseDictionary(words));
    });
}

LearnedWords learnedWords(const Preferences &preferences) {
    return parseLearnedWords(preferences.string(keys::learnedWords).value_or(QString()));
}

QStringList learnedWords(const Preferences &preferences, const QStringList &languages) {
    const LearnedWords learned = learnedWords(preferences);
    QStringList words;
    for (const QString &language : languages) {
        const auto found = learned.find(language);
        if (found != learned.end())
            words.append(found->second);
    }
    return words;
}

} // namespace velmo
