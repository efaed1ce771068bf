#include "text/passes/passes.h"

#include "base/pattern.h"
#include "text/passes/line_breaks.h"

namespace velmo {

QString collapseRepeatedShortWords(const QString &text, const CleanupContext &) {
    static const Pattern repetition(withinLine(u"\\b(\\w{1,3})\\s+\\1\\b"), Pattern::CaseInsensitive);
    return repetition.replaced(text, u"$1");
}

} // namespace velmo
