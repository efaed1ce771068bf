#include "text/passes/line_breaks.h"

#include "base/characters.h"
#include "text/passes/passes.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace velmo {

QString withinLine(QStringView expression) {
    return expression.toString().replace(u"\\s"_s, u"[\\s--[\u2028\u2029]]"_s);
}

QString foldTranscriptBreaks(const QString &text, const CleanupContext &) {
    QString folded = text;
    folded.replace(kLineBreak, u'\n');
    folded.replace(kParagraphBreak, u'\n');
    return folded;
}

QString writeSpokenBreaks(const QString &text, const CleanupContext &) {
    constexpr qsizetype atMost = 2; // one empty line between paragraphs
    QString result;
    qsizetype feeds = 0;
    for (const QChar character : trimmed(text)) {
        if (isSpokenBreak(character)) {
            feeds += character == kLineBreak ? 1 : 2;
        } else {
            result += QString(std::min(feeds, atMost), u'\n');
            result += character;
            feeds = 0;
        }
    }
    return result;
}

} // namespace velmo
