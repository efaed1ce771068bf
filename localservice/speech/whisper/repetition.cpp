#include "localservice/speech/whisper/repetition.h"

#include <QRegularExpression>
#include <QStringList>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace velmo::localservice {

namespace {

/// Whether the words from `first` on are said again, `distance` words later.
bool isSaidAgain(const QStringList &words, qsizetype first, qsizetype distance, qsizetype count) {
    if (first + distance + count > words.size())
        return false;
    const auto begin = words.begin() + first;
    return std::equal(begin, begin + count, begin + distance);
}

} // namespace

bool repeatsItself(const QString &text) {
    static const QRegularExpression between(u"[^\\p{L}\\p{N}']+"_s,
                                            QRegularExpression::UseUnicodePropertiesOption);
    const QStringList words = text.toLower().split(between, Qt::SkipEmptyParts);
    constexpr qsizetype some = 3;
    constexpr qsizetype many = 4;
    constexpr qsizetype within = 12;
    for (qsizetype first = 0; first < words.size(); ++first) {
        if (isSaidAgain(words, first, some, some))
            return true;
        for (qsizetype distance = 1; distance <= within - many; ++distance) {
            if (isSaidAgain(words, first, distance, many))
                return true;
        }
    }
    return false;
}

} // namespace velmo::localservice
