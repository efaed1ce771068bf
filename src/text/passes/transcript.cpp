#include "text/passes/transcript.h"

#include "base/characters.h"
#include "text/passes/hallucination_filter.h"
#include "text/passes/phrase.h"

namespace velmo {

QString mendWishes(const QString &text, const CleanupContext &) {
    static const Phrase iWouldTo(u"I'd to ");
    static const Phrase iWantGo(u"I want go ");
    PhraseText mended(text);
    mended.replaceAll(iWouldTo, QStringLiteral("I'd like to "));
    mended.replaceAll(iWantGo, QStringLiteral("I want to go "));
    return mended.text();
}

QString dropStockPhrase(const QString &text, const CleanupContext &) {
    return isHallucinationPhrase(text) ? QString() : trimmed(text).toString();
}

} // namespace velmo
