#include "text/passes/passes.h"

#include "base/characters.h"
#include "text/passes/phrase.h"
#include "text/tables/filler_words.h"
#include "text/tables/language_sets.h"

#include <algorithm>
#include <deque>
#include <map>
#include <vector>

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

struct Filler {
    explicit Filler(QStringView word)
        : phrase(word, u"(?<=^|\\s)", u"[,.]?(?=\\s|$)"), characters(characterCount(word)) {}

    Phrase phrase;
    qsizetype characters;
};

using Fillers = std::deque<Filler>;

const Fillers &hesitations() {
    static const Fillers fillers(universalHesitations().begin(), universalHesitations().end());
    return fillers;
}

const Fillers &fillersOf(const QString &code) {
    static const auto byLanguage = [] {
        std::map<QString, Fillers> fillers;
        for (const LanguageFillers &language : fillersByLang()) {
            for (const QStringView word : language.fillers)
                fillers[language.code.toString()].emplace_back(word);
        }
        return fillers;
    }();
    static const Fillers none;
    const auto found = byLanguage.find(code);
    return found == byLanguage.end() ? none : found->second;
}

/// The Norwegian fillers ("ass", "ba") are words of other languages; they only go when somebody may have
/// spoken Norwegian.
bool removesFillersOf(const QString &code, const CleanupContext &context) {
    return !context.detectedLanguage || context.detected(isScandinavian) || !isNorwegian(code);
}

/// In Scandinavian speech the English hesitation "er" is the verb "is".
bool isVerb(const Filler &filler, const CleanupContext &context) {
    return filler.phrase.caseFolded() == u"er" && context.detected(isScandinavian);
}

/// Longest first, so that a phrase goes before the words it is made of; equally long ones in table order.
std::vector<const Filler *> fillersToRemove(const CleanupContext &context) {
    std::vector<const Filler *> fillers;
    const auto add = [&](const Fillers &list) {
        for (const Filler &filler : list) {
            if (!isVerb(filler, context))
                fillers.push_back(&filler);
        }
    };
    add(hesitations());
    for (const QString &code : context.languages) {
        if (removesFillersOf(code, context))
            add(fillersOf(code));
    }
    std::ranges::stable_sort(fillers, std::greater<>(), &Filler::characters);
    return fillers;
}

} // namespace

QString removeFillers(const QString &text, const CleanupContext &context) {
    PhraseText remaining(text);
    for (const Filler *filler : fillersToRemove(context))
        remaining.replaceAll(filler->phrase, u" "_s);
    return remaining.text();
}

} // namespace velmo
