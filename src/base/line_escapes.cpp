#include "base/line_escapes.h"

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

bool breaksALine(QChar character) {
    const auto category = character.category();
    return category == QChar::Other_Control || category == QChar::Separator_Line ||
           category == QChar::Separator_Paragraph;
}

} // namespace

std::optional<QString> lineEscape(QChar character) {
    if (!breaksALine(character))
        return std::nullopt;
    switch (character.unicode()) {
    case u'\n':
        return u"\\n"_s;
    case u'\r':
        return u"\\r"_s;
    case u'\t':
        return u"\\t"_s;
    default:
        return u"\\u%1"_s.arg(character.unicode(), 4, 16, QLatin1Char('0'));
    }
}

} // namespace velmo
