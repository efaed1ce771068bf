#include "text/passes/passes.h"

#include "base/case_mapping.h"
#include "base/characters.h"
#include "base/pattern.h"
#include "text/passes/line_breaks.h"
#include "text/tables/language_sets.h"

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

bool endsSentence(QStringView character) {
    return character == u"." || character == u"!" || character == u"?" || isSpokenBreak(character.front());
}

} // namespace

QString capitaliseStart(const QString &text, const CleanupContext &) {
    return withFirstCapital(trimmed(text).toString());
}

QString capitaliseSentences(const QString &text, const CleanupContext &) {
    const QString capitalised = withFirstCapital(text);
    QString result;
    result.reserve(capitalised.size());
    bool isStart = false;
    for (const QStringView character : characters(capitalised)) {
        if (isStart && isLowerCase(character))
            result += upperCased(character);
        else
            result += character;
        isStart = endsSentence(character) || (isStart && character == u" ");
    }
    return result;
}

QString capitaliseEnglishI(const QString &text, const CleanupContext &context) {
    // Scandinavians say "i" (in) in every other sentence.
    if (!context.languages.contains(u"en") || context.detected(isScandinavian))
        return text;
    static const Pattern i(u"\\bi\\b"_s);
    return i.replaced(text, u"I");
}

} // namespace velmo
