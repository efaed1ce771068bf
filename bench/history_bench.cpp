#include "base/calendar.h"
#include "base/qt_main_queue.h"
#include "base/uuid.h"
#include "store/history_store.h"
#include "store/sqlite_preferences.h"
#include "ui/models/history_days.h"
#include "ui/models/usage_statistics.h"

#include <QTemporaryDir>
#include <benchmark/benchmark.h>

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

using namespace std::chrono_literals;

/// Ten minutes of speech: 1,400 words.
const QString kLongDictation = u"Et langt diktat går over mange setninger. "_s.repeated(200);

/// A full history of long dictations, one an hour.
QList<Entry> longEntries(Date newest) {
    QList<Entry> entries;
    for (int i = 0; i < HistoryStore::maxEntries; ++i)
        entries.append({newUpperUuid(), kLongDictation, newest - i * 1h, 600.0});
    return entries;
}

class HistoryBench : public benchmark::Fixture {
public:
    HistoryBench() { preferences.set(HistoryStore::storageKey, *encodeEntries(entries)); }

protected:
    QtMainQueue queue;
    const Date now = queue.now();
    const QList<Entry> entries = longEntries(now);
    const Calendar calendar{{u"nb_NO"_s, u"Europe/Oslo"_s}};
    QTemporaryDir directory;
    SqlitePreferences preferences{directory.filePath(u"preferences.sqlite"_s)};
};

/// At launch.
BENCHMARK_DEFINE_F(HistoryBench, load)(benchmark::State &state) {
    for (auto _ : state)
        benchmark::DoNotOptimize(HistoryStore(preferences, queue).entries().size());
}

/// At the end of a dictation.
BENCHMARK_DEFINE_F(HistoryBench, add)(benchmark::State &state) {
    HistoryStore store(preferences, queue);
    for (auto _ : state)
        store.add(kLongDictation, 600.0);
}

/// Whenever the home page is drawn.
BENCHMARK_DEFINE_F(HistoryBench, statistics)(benchmark::State &state) {
    for (auto _ : state)
        benchmark::DoNotOptimize(usageStatistics(entries, now - 999h, std::nullopt, now, calendar));
}

BENCHMARK_DEFINE_F(HistoryBench, days)(benchmark::State &state) {
    for (auto _ : state)
        benchmark::DoNotOptimize(historyDays(entries, now, calendar));
}

} // namespace

BENCHMARK_REGISTER_F(HistoryBench, load)->Unit(benchmark::kMillisecond);
BENCHMARK_REGISTER_F(HistoryBench, add)->Unit(benchmark::kMillisecond);
BENCHMARK_REGISTER_F(HistoryBench, statistics)->Unit(benchmark::kMillisecond);
BENCHMARK_REGISTER_F(HistoryBench, days)->Unit(benchmark::kMillisecond);

} // namespace velmo
