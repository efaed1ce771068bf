#include "text/passes/norwegian_words.h"

#include "base/case_mapping.h"
#include "base/characters.h"
#include "text/passes/passes.h"
#include "text/passes/phrase.h"
#include "text/tables/language_sets.h"
#include "text/tables/nynorsk_words.h"

#include <deque>

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

struct BokmalForm {
    explicit BokmalForm(const NynorskWord &row)
        : nynorsk(row.nynorsk, u"\\b", u"\\b"), bokmal(row.bokmal.toString()) {}

    [[nodiscard]] QString inCaseOf(QStringView nynorskWord) const {
        return isUpperCase(firstCharacters(nynorskWord, 1)) ? withFirstCapital(bokmal) : bokmal;
    }

    Phrase nynorsk;
    QString bokmal;
};

QString inBokmal(const QString &text) {
    static const std::deque<BokmalForm> forms(nynorskWords().begin(), nynorskWords().end());
    PhraseText result(text);
    for (const BokmalForm &form : forms) {
        result.replaceAll(form.nynorsk,
                          [&](const Pattern::Match &match) { return form.inCaseOf(match.group(0)); });
    }
    return result.text();
}

/// "NO" stays: it is an abbreviation.
QString withNowForNo(const QString &text) {
    static const Pattern no(u"(?:^|(?<=[.!?]\\s)|(?<=[,;]\\s))\\b([Nn])o\\b"_s, Pattern::Multiline);
    return no.replaced(text, u"$1å");
}

} // namespace

bool looksNorwegian(const QString &text) {
    static const Pattern nordicLetter(u"[æøåäö]"_s);
    static const Pattern commonWord(u"\\b(ikke|også|bare|hvordan|hvorfor|mellom|jobb|takk|jeg|det|er)\\b"_s);
    const QString lower = lowerCased(text);
    return nordicLetter.occursIn(lower) || commonWord.occursIn(lower);
}

bool isBokmal(const QString &primaryLanguage) {
    return primaryLanguage == u"no" || primaryLanguage == u"nb";
}

QString fixNorwegianWords(const QString &text, const QString &primaryLanguage) {
    if (!isBokmal(primaryLanguage))
        return text;
    return withNowForNo(inBokmal(text));
}

QString fixNorwegian(const QString &text, const CleanupContext &context) {
    if (!context.detected(mayBeNorwegian) || !looksNorwegian(text))
        return text;
    return fixNorwegianWords(text, context.primaryLanguage);
}

} // namespace velmo
