#include "text/passes/passes.h"

#include "base/pattern.h"
#include "text/passes/line_breaks.h"

using namespace Qt::StringLiterals;

namespace velmo {

QString squeezeWhiteSpace(const QString &text, const CleanupContext &) {
    static const Pattern whiteSpace(withinLine(u"\\s+"));
    static const Pattern breakWithSpace(u" ?([\u2028\u2029]) ?"_s);
    return breakWithSpace.replaced(whiteSpace.replaced(text, u" "), u"$1");
}

QString pullMarksToWords(const QString &text, const CleanupContext &) {
    static const Pattern spaceBeforeMark(withinLine(u"\\s+([.,!?;:])"));
    return spaceBeforeMark.replaced(text, u"$1");
}

QString spaceOutMarks(const QString &text, const CleanupContext &) {
    static const Pattern markBeforeWord(u"([.,!?;:])(?!\\s|$)"_s);
    return markBeforeWord.replaced(text, u"$1 ");
}

QString dropLeadingMark(const QString &text, const CleanupContext &) {
    static const Pattern leadingMark(u"^\\s*[.,!?;:]\\s*"_s);
    return leadingMark.replaced(text, u"");
}

} // namespace velmo
