#include "base/iso_date.h"

#include <QDateTime>
#include <QRegularExpression>
#include <cmath>

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

using namespace std::chrono;

/// A Date counts nanoseconds in 64 bits, which is 9.2 thousand million seconds either way.
constexpr qint64 kFarthestSeconds = 9'000'000'000;

constexpr int kFractionDigits = 9;

/// ".25" for 250 million nanoseconds, nothing for none.
QString fractionText(nanoseconds fraction) {
    if (fraction == nanoseconds::zero())
        return {};
    QString digits = u"%1"_s.arg(fraction.count(), kFractionDigits, 10, QLatin1Char('0'));
    while (digits.endsWith(u'0'))
        digits.chop(1);
    return u'.' + digits;
}

/// The opposite, of the digits alone.
nanoseconds fractionOf(const QString &digits) {
    return nanoseconds(digits.leftJustified(kFractionDigits, u'0').toLongLong());
}

} // namespace

QString isoText(Date date) {
    const auto whole = floor<seconds>(date);
    const auto dateTime = QDateTime::fromSecsSinceEpoch(whole.time_since_epoch().count(), Qt::UTC);
    return dateTime.toString(u"yyyy-MM-ddTHH:mm:ss"_s) + fractionText(date - whole) + u'Z';
}

std::optional<Date> dateFromIsoText(const QString &text) {
    static const QRegularExpression form(
        u""
        R"(^([0-9]{4}-[0-9]{2}-[0-9]{2}T[0-9]{2}:[0-9]{2}:[0-9]{2})(?:\.([0-9]{1,9}))?(Z|[+-][0-9]{2}:[0-9]{2})\z)"_s);
    const auto match = form.match(text);
    const auto dateTime = QDateTime::fromString(match.captured(1) + match.captured(3), Qt::ISODate);
    if (!match.hasMatch() || !dateTime.isValid())
        return std::nullopt;
    const qint64 whole = dateTime.toSecsSinceEpoch();
    if (std::abs(whole) > kFarthestSeconds)
        return std::nullopt;
    return Date(duration_cast<Date::duration>(seconds(whole) + fractionOf(match.captured(2))));
}

} // namespace velmo
