#include "localservice/account/person.h"

#include "base/characters.h"
#include "base/utf8.h"

#include <algorithm>

namespace velmo::localservice {

namespace {

constexpr qsizetype kLongestName = 100;
constexpr qsizetype kMostUnits = 1'000; // a character may carry any number of marks
constexpr qsizetype kLongestEmail = 254;

bool isControl(QChar unit) {
    return unit.category() == QChar::Other_Control || unit == QChar::LineSeparator ||
           unit == QChar::ParagraphSeparator;
}

} // namespace

bool isNamePart(const QString &text) {
    return text.size() <= kMostUnits && std::none_of(text.begin(), text.end(), isControl) &&
           firstCharacters(text, kLongestName).size() == text.size();
}

QString joinedName(const QString &given, const QString &family) {
    const QString both = given + u' ' + family;
    return trimmed(both).toString();
}

bool isEmail(const QString &text) {
    const auto isStray = [](QChar unit) { return unit.isSpace() || isControl(unit); };
    const qsizetype at = text.indexOf(u'@');
    return at > 0 && at == text.lastIndexOf(u'@') && at + 1 < text.size() &&
           std::none_of(text.begin(), text.end(), isStray) && utf8(text).size() <= kLongestEmail;
}

} // namespace velmo::localservice
