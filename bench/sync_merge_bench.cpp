#include "service/sync/sync_merge.h"
#include "service/sync/synced_list.h"
#include "store/dictionary_words.h"

#include <benchmark/benchmark.h>

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

/// As many words as wanted, from that one on; in an order in which people add them.
QStringList words(int first, int count) {
    QStringList words;
    words.reserve(count);
    for (int i = 0; i < count; ++i)
        words.append(u"Ordbøkord%1"_s.arg(first + (i * 7919) % count));
    return words;
}

/// A machine and an account that have three words of four in common, and a word in ten that was deleted elsewhere.
struct Sides {
    explicit Sides(int count) : local(words(0, count)), server(words(count / 4, count)) {}

    QStringList local;
    QStringList server;
    QStringList deleted = words(0, static_cast<int>(local.size()) / 10);
};

void mergeWords(benchmark::State &state) {
    const Sides sides(static_cast<int>(state.range(0)));
    const QSet<QString> deleted(sides.deleted.begin(), sides.deleted.end());
    for (auto _ : state)
        benchmark::DoNotOptimize(mergeDictionary(sides.local, sides.server, deleted, {}));
    state.SetComplexityN(state.range(0));
}
BENCHMARK(mergeWords)
    ->Arg(1000)
    ->Arg(10'000)
    ->Arg(100'000)
    ->Unit(benchmark::kMillisecond)
    ->Complexity(benchmark::oNLogN);

/// From the stored text and the reply to the text to be stored: what keeps other changes of the dictionary waiting.
void mergeStoredDictionary(benchmark::State &state) {
    const Sides sides(static_cast<int>(state.range(0)));
    const auto list = makeSyncedDictionary();
    const QString stored = serialiseDictionary(sides.local);
    const QJsonObject reply{{u"words"_s, QJsonArray::fromStringList(sides.server)},
                            {u"deletedWords"_s, QJsonArray::fromStringList(sides.deleted)}};
    for (auto _ : state)
        benchmark::DoNotOptimize(list->merge(stored, stored, reply));
}
BENCHMARK(mergeStoredDictionary)->Arg(10'000)->Unit(benchmark::kMillisecond);

} // namespace

} // namespace velmo
