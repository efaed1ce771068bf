#include "base/qt_main_queue.h"
#include "store/history_store.h"
#include "store/preference_keys.h"
#include "store/sqlite_preferences.h"

#include <QTemporaryDir>
#include <benchmark/benchmark.h>

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

const QString kDictation = u"Et vanlig diktat er på et par setninger. "_s.repeated(5);

/// A domain as a person has it after some weeks: settings, a dictionary of 1,000 words, a full history.
struct FilledDomain {
    FilledDomain() {
        preferences.set(keys::selectedLanguages, u"no,sv,da,fi,en"_s);
        QStringList words;
        for (int i = 0; i < 1000; ++i)
            words.append(QStringLiteral(R"({"word":"ord%1"})").arg(i));
        preferences.set(keys::dictionary, QString(u'[' + words.join(u',') + u']'));
        HistoryStore history(preferences, queue);
        for (int i = 0; i < HistoryStore::maxEntries; ++i)
            history.add(kDictation, 8.5);
    }

    QTemporaryDir directory;
    QString path = directory.filePath(u"preferences.sqlite"_s);
    QtMainQueue queue;
    SqlitePreferences preferences{path};
};

void readAString(benchmark::State &state) {
    const FilledDomain domain;
    for (auto _ : state)
        benchmark::DoNotOptimize(domain.preferences.string(keys::selectedLanguages));
}
BENCHMARK(readAString);

void readAnAbsentKey(benchmark::State &state) {
    const FilledDomain domain;
    for (auto _ : state)
        benchmark::DoNotOptimize(domain.preferences.boolean(keys::smartFormatting));
}
BENCHMARK(readAnAbsentKey);

void readADictionaryOf1000Words(benchmark::State &state) {
    const FilledDomain domain;
    for (auto _ : state)
        benchmark::DoNotOptimize(domain.preferences.string(keys::dictionary));
}
BENCHMARK(readADictionaryOf1000Words);

void openAndReadAString(benchmark::State &state) {
    const FilledDomain domain;
    for (auto _ : state) {
        const SqlitePreferences preferences(domain.path);
        benchmark::DoNotOptimize(preferences.string(keys::selectedLanguages));
    }
}
BENCHMARK(openAndReadAString);

void changeAString(benchmark::State &state) {
    FilledDomain domain;
    int count = 0;
    for (auto _ : state)
        domain.preferences.set(keys::selectedMode, QString::number(++count));
}
BENCHMARK(changeAString);

void addToAFullHistory(benchmark::State &state) {
    FilledDomain domain;
    HistoryStore history(domain.preferences, domain.queue);
    for (auto _ : state)
        history.add(kDictation, 8.5);
}
BENCHMARK(addToAFullHistory);

} // namespace

} // namespace velmo
