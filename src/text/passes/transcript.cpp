#include "text/passes/passes.h"

#include "base/characters.h"
#include "text/passes/hallucination_filter.h"
#include "text/passes/phrase.h"

using namespace Qt::StringLiterals;

namespace velmo {

QString mendWishes(const QString &text, const CleanupContext &) {
    static const Phrase iWouldTo(u"I'd to ");
    static const Phrase iWantGo(u"I want go ");
    PhraseText mended(text);
    mended.replaceAll(iWouldTo, u"I'd like to "_s);
    mended.replaceAll(iWantGo, u"I want to go "_s);
    return mended.text();
}

QString dropStockPhrase(const QString &text, const CleanupContext &) {
    return isHallucinationPhrase(text) ? QString() : trimmed(text).toString();
}

} // namespace velmo
