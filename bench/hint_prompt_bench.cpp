#include "dictation/session/hint_prompt.h"

#include "store/dictionary_words.h"
#include "store/memory_preferences.h"
#include "store/preference_keys.h"
#include "text/passes/hallucination_filter.h"

#include <benchmark/benchmark.h>

using namespace Qt::StringLiterals;

namespace {

/// A dictionary of as many words as the benchmark is run with.
class HintPromptBench : public benchmark::Fixture {
public:
    void SetUp(const benchmark::State &state) override {
        const auto count = static_cast<int>(state.range(0));
        QStringList words;
        words.reserve(count);
        for (int i = 0; i < count; ++i)
            words.append(u"Ordbokord%1"_s.arg((i * 7919) % count));
        preferences.set(velmo::keys::dictionary, velmo::serialiseDictionary(words));
    }

protected:
    velmo::MemoryPreferences preferences;
    const QStringList languages = {u"no"_s, u"en"_s};
};

/// From the stored text to the prompt, at the end of the first recording after a change of the dictionary.
BENCHMARK_DEFINE_F(HintPromptBench, first)(benchmark::State &state) {
    for (auto _ : state)
        benchmark::DoNotOptimize(velmo::HintPrompt(preferences).current(languages));
    state.SetComplexityN(state.range(0));
}

/// At the end of every other recording, once the stored text has been read.
BENCHMARK_DEFINE_F(HintPromptBench, next)(benchmark::State &state) {
    const velmo::HintPrompt hints(preferences);
    for (auto _ : state)
        benchmark::DoNotOptimize(hints.current(languages));
}

/// Whether a text echoes such a prompt, which is asked twice for every dictation.
BENCHMARK_DEFINE_F(HintPromptBench, isEcho)(benchmark::State &state) {
    const auto prompt = velmo::HintPrompt(preferences).current(languages);
    const QString text = u"Møtet begynner klokka ti i morgen, og Ordbokord17 er med."_s;
    for (auto _ : state)
        benchmark::DoNotOptimize(velmo::isPromptEcho(text, prompt));
    state.SetComplexityN(state.range(0));
}

void sizes(benchmark::internal::Benchmark *benchmark) {
    benchmark->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
}

} // namespace

BENCHMARK_REGISTER_F(HintPromptBench, first)->Apply(sizes)->Complexity();
BENCHMARK_REGISTER_F(HintPromptBench, next)->Apply(sizes);
BENCHMARK_REGISTER_F(HintPromptBench, isEcho)->Apply(sizes)->Complexity();
