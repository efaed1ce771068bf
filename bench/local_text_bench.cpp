#include "store/memory_preferences.h"
#include "store/preference_keys.h"
#include "text/local_pipeline.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRandomGenerator>
#include <benchmark/benchmark.h>

// The local text path: what a dictation costs beside a person's own words, and how the cost grows with the text,
// also for texts made to be slow. Growth rows name the length; four times the length should take at most 4.6
// times as long.
namespace {

using namespace velmo;
using namespace Qt::StringLiterals;

// 34 words of Norwegian speech as a speech model writes them.
const QString kDictation = u"hei kari komma eh jeg sjekket kubernetis og grafena i går punktum ny linje det "
                           u"er liksom ikke helt bra ennå "
                           u"men vi kan se på det i i morgen klokka 10:30 emoji tommel opp hilsen ola"_s;

QString randomWord(QRandomGenerator &random) {
    const QString letters = u"eeeeaaaarrrrnnnttttsssiiillldddkkkoogggmmvvfuppbhøjyåæcw"_s;
    QString word;
    for (int length = random.bounded(5, 13); length > 0; --length)
        word += letters[random.bounded(letters.size())];
    return word;
}

QString dictionaryOf(int count) {
    QRandomGenerator random(7);
    QJsonArray words = {QJsonObject{{u"word"_s, u"Kubernetes"_s}}, QJsonObject{{u"word"_s, u"Grafana"_s}}};
    while (words.size() < count)
        words.append(QJsonObject{{u"word"_s, randomWord(random)}});
    return QString::fromUtf8(QJsonDocument(words).toJson(QJsonDocument::Compact));
}

QString snippetsOf(int count) {
    QRandomGenerator random(11);
    QJsonArray snippets;
    while (snippets.size() < count) {
        snippets.append(QJsonObject{{u"id"_s, QString::number(snippets.size())},
                                    {u"trigger"_s, u"min "_s + randomWord(random)},
                                    {u"expansion"_s, u"Storgata 1, 0155 Oslo"_s}});
    }
    return QString::fromUtf8(QJsonDocument(snippets).toJson(QJsonDocument::Compact));
}

void dictation(benchmark::State &state) {
    const MemoryPreferences preferences({{keys::dictionary, dictionaryOf(int(state.range(0)))},
                                         {keys::snippets, snippetsOf(int(state.range(1)))}});
    const LocalTextPath path(preferences);
    for (auto _ : state)
        benchmark::DoNotOptimize(path.process(kDictation, u"no"_s));
}
BENCHMARK(dictation)
    ->ArgNames({"words", "snippets"})
    ->Args({0, 0})
    ->Args({1000, 200})
    ->Args({100'000, 200})
    ->Args({1000, 100'000});

void changedDictionary(benchmark::State &state) {
    const QStringList stored = {dictionaryOf(int(state.range(0))), dictionaryOf(int(state.range(0)) + 1)};
    MemoryPreferences preferences;
    const LocalTextPath path(preferences);
    int turn = 0;
    for (auto _ : state) {
        preferences.set(keys::dictionary, stored[++turn % 2]);
        benchmark::DoNotOptimize(path.process(kDictation, u"no"_s));
    }
}
BENCHMARK(changedDictionary)->Arg(1000)->Arg(100'000)->Unit(benchmark::kMillisecond);

struct Growing {
    const char *name;
    QString (*text)(qsizetype length);
};

QString repeated(const QString &piece, qsizetype count) {
    return piece.repeated(count);
}

const Growing kGrowing[] = {
    {"speech", [](qsizetype n) { return repeated(kDictation + u' ', n / kDictation.size()); }},
    {"dots", [](qsizetype n) { return repeated(u"."_s, n); }},
    {"blanks", [](qsizetype n) { return u"a"_s + repeated(u" "_s, n) + u"b"_s; }},
    {"emoji_blanks", [](qsizetype n) { return u"emoji"_s + repeated(u" "_s, n) + u"x"_s; }},
    {"emoji_phrases", [](qsizetype n) { return repeated(u"emoji warning "_s, n / 14); }},
    {"emoji_words", [](qsizetype n) { return repeated(u"emoji "_s, n / 6); }},
    {"one_word", [](qsizetype n) { return repeated(u"a"_s, n); }},
    {"short_words", [](qsizetype n) { return repeated(u"ja "_s, n); }},
    {"joined_marks", [](qsizetype n) { return u"hei a"_s + repeated(u"\u0301"_s, n) + u" du"_s; }},
    {"unordered_marks",
     [](qsizetype n) { return u"heiii"_s + repeated(u"\u0301\u0316"_s, n / 2) + u" du"_s; }},
    {"joiners", [](qsizetype n) { return u"hei"_s + repeated(u"\u200d"_s, n) + u" du"_s; }},
    {"flags", [](qsizetype n) { return repeated(u"🇳🇴"_s, n / 4); }},
    {"capital_sigmas", [](qsizetype n) { return repeated(u"Σ"_s, n) + u". hei"_s; }},
    {"spoken_breaks", [](qsizetype n) { return repeated(u"ny linje "_s, n / 9); }},
    {"fillers", [](qsizetype n) { return repeated(u"eh, "_s, n / 4); }},
    {"norwegian_no", [](qsizetype n) { return u"ikke "_s + repeated(u"no, no. "_s, n / 8); }},
};

void growth(benchmark::State &state, const Growing &kind) {
    const MemoryPreferences preferences(
        {{keys::dictionary, dictionaryOf(1000)}, {keys::snippets, snippetsOf(200)}});
    const LocalTextPath path(preferences);
    const QString text = kind.text(state.range(0));
    for (auto _ : state)
        benchmark::DoNotOptimize(path.process(text, u"no"_s));
}

const bool kRegistered = [] {
    for (const Growing &kind : kGrowing)
        benchmark::RegisterBenchmark((std::string("growth/") + kind.name).c_str(), growth, kind)
            ->Arg(50'000)
            ->Arg(200'000)
            ->Unit(benchmark::kMillisecond);
    return true;
}();

} // namespace
