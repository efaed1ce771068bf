#include "dictation/hint_prompt.h"

#include "store/dictionary_words.h"
#include "store/memory_preferences.h"
#include "store/preference_keys.h"

#include <benchmark/benchmark.h>

namespace {

QString storedDictionary(int count) {
    QStringList words;
    words.reserve(count);
    for (int i = 0; i < count; ++i)
        words.append(QStringLiteral("Ordbokord%1").arg((i * 7919) % count));
    return velmo::serialiseDictionary(words);
}

/// From the stored text to the prompt, as at the end of every recording.
void hintPrompt(benchmark::State &state) {
    velmo::MemoryPreferences preferences;
    preferences.set(velmo::keys::dictionary, storedDictionary(static_cast<int>(state.range(0))));
    const QStringList languages = {QStringLiteral("no"), QStringLiteral("en")};
    for (auto _ : state)
        benchmark::DoNotOptimize(velmo::buildHintPrompt(preferences, languages));
    state.SetComplexityN(state.range(0));
}

} // namespace

BENCHMARK(hintPrompt)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond)->Complexity();
