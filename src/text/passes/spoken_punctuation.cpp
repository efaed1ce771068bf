#include "text/passes/passes.h"

#include "text/passes/line_breaks.h"
#include "text/passes/phrase.h"
#include "text/tables/spoken_punctuation.h"

#include <deque>
#include <map>

namespace velmo {

namespace {

struct WrittenPhrase {
    explicit WrittenPhrase(const SpokenRule &rule)
        : spoken(rule.spoken, u"\\b", isSpokenBreak(rule.written.front()) ? u"\\b[,.]?" : u"\\b"),
          written(rule.written.toString()) {}

    Phrase spoken;
    QString written;
};

using WrittenPhrases = std::map<QString, std::deque<WrittenPhrase>>;

WrittenPhrases writtenPhrases() {
    WrittenPhrases phrases;
    for (const LanguageRules &language : spokenToWrittenRules()) {
        for (const SpokenRule &rule : language.rules)
            phrases[language.code.toString()].emplace_back(rule);
    }
    return phrases;
}

} // namespace

QString writeSpokenPunctuation(const QString &text, const CleanupContext &context) {
    static const WrittenPhrases phrases = writtenPhrases();
    PhraseText written(text);
    for (const QString &code : context.languages) {
        const auto language = phrases.find(code);
        if (language == phrases.end())
            continue;
        for (const WrittenPhrase &phrase : language->second)
            written.replaceAll(phrase.spoken, phrase.written);
    }
    return written.text();
}

} // namespace velmo
