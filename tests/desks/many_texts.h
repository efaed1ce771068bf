#pragma once

#include "store/dictionary_words.h"
#include "store/history_store.h"
#include "store/memory_preferences.h"
#include "store/preference_keys.h"
#include "store/snippet_list.h"

namespace velmo::testing {

/// The lists of somebody who has dictated for years: 100 long texts, the last of them now, 2,000 words and 500 snippets,
/// some much longer than is usual.
inline void storeManyTexts(MemoryPreferences &preferences, Date now) {
    const auto repeated = [](const char *text, int times) { return QString::fromUtf8(text).repeated(times); };
    QList<Entry> entries;
    for (int number = 0; number < HistoryStore::maxEntries; ++number) {
        const QString text =
            repeated("Dette er en lang diktert tekst om et møte som varte lenge. ", 1 + number % 12);
        entries.append(
            {QString::number(number), text.trimmed(), now - number * std::chrono::minutes(47), 20.0});
    }
    entries[1].text = repeated("https://example.com/", 1) + repeated("enSværtLangAdresseUtenMellomrom", 8);
    QStringList words = {repeated("Menneskerettighetsorganisasjonsmedlem", 6)};
    for (int number = 0; number < 2000; ++number)
        words.append(repeated("ord", 1 + number % 4) + QString::number(number));
    QList<SnippetEntry> snippets;
    for (int number = 0; number < 500; ++number)
        snippets.append({QString::number(number), repeated("utløser ", 1) + QString::number(number),
                         repeated("En lang tekst som settes inn. ", 1 + number % 9).trimmed()});
    preferences.set(keys::transcriptionHistory, encodeEntries(entries).value_or(QByteArray()));
    preferences.set(keys::dictionary, serialiseDictionary(words));
    preferences.set(keys::snippets, serialiseSnippets(snippets));
}

} // namespace velmo::testing
