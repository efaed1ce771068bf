#include "base/calendar.h"

#include "base/icu_text.h"

#include <QLocale>
#include <QTimeZone>
#include <algorithm>
#include <array>
#include <unicode/ucal.h>
#include <unicode/udat.h>
#include <unicode/udisplaycontext.h>
#include <unicode/ureldatefmt.h>

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

template <auto close>
struct Closer {
    template <class Object>
    void operator()(Object *object) const {
        close(object);
    }
};

using OwnedCalendar = std::unique_ptr<UCalendar, Closer<ucal_close>>;
using OwnedFormat = std::unique_ptr<UDateFormat, Closer<udat_close>>;
using OwnedRelativeFormat = std::unique_ptr<URelativeDateTimeFormatter, Closer<ureldatefmt_close>>;

UDate icuDate(Date moment) {
    return std::chrono::duration<double, std::milli>(moment.time_since_epoch()).count();
}

Date dateOf(UDate milliseconds) {
    return Date(
        std::chrono::duration_cast<Date::duration>(std::chrono::duration<double, std::milli>(milliseconds)));
}

OwnedCalendar openCalendar(const QByteArray &locale, const QString &zone) {
    UErrorCode status = U_ZERO_ERROR;
    OwnedCalendar calendar(
        ucal_open(icu::units(zone), icu::length(zone), locale.constData(), UCAL_DEFAULT, &status));
    // Where the clocks change at midnight, a day begins with the first moment that its wall clock shows.
    ucal_setAttribute(calendar.get(), UCAL_SKIPPED_WALL_TIME, UCAL_WALLTIME_NEXT_VALID);
    ucal_setAttribute(calendar.get(), UCAL_REPEATED_WALL_TIME, UCAL_WALLTIME_FIRST);
    return calendar;
}

OwnedFormat openFormat(UDateFormatStyle dateStyle, const QByteArray &locale, const QString &zone,
                       const QString &pattern = QString()) {
    UErrorCode status = U_ZERO_ERROR;
    return OwnedFormat(udat_open(pattern.isEmpty() ? UDAT_NONE : UDAT_PATTERN, dateStyle, locale.constData(),
                                 icu::units(zone), icu::length(zone), icu::units(pattern),
                                 icu::length(pattern), &status));
}

OwnedRelativeFormat openRelative(const QByteArray &locale) {
    UErrorCode status = U_ZERO_ERROR;
    return OwnedRelativeFormat(ureldatefmt_open(locale.constData(), nullptr, UDAT_STYLE_SHORT,
                                                UDISPCTX_CAPITALIZATION_NONE, &status));
}

/// What an ICU function writes into a buffer; every text here is short.
template <class Writer>
QString written(Writer writer) {
    std::array<UChar, 128> buffer{};
    UErrorCode status = U_ZERO_ERROR;
    const int32_t length = writer(buffer.data(), static_cast<int32_t>(buffer.size()), &status);
    if (U_FAILURE(status))
        return {};
    return QString(reinterpret_cast<const QChar *>(buffer.data()), length);
}

QString formatted(UDateFormat *format, Date moment) {
    return written([&](UChar *buffer, int32_t size, UErrorCode *status) {
        return udat_format(format, icuDate(moment), buffer, size, nullptr, status);
    });
}

struct Unit {
    UCalendarDateFields field;
    URelativeDateTimeUnit name;
};

// From the largest down.
constexpr std::array kUnits = {
    Unit{UCAL_YEAR, UDAT_REL_UNIT_YEAR},         Unit{UCAL_MONTH, UDAT_REL_UNIT_MONTH},
    Unit{UCAL_WEEK_OF_YEAR, UDAT_REL_UNIT_WEEK}, Unit{UCAL_DATE, UDAT_REL_UNIT_DAY},
    Unit{UCAL_HOUR_OF_DAY, UDAT_REL_UNIT_HOUR},  Unit{UCAL_MINUTE, UDAT_REL_UNIT_MINUTE},
    Unit{UCAL_SECOND, UDAT_REL_UNIT_SECOND},
};

} // namespace

struct Calendar::Parts {
    OwnedCalendar calendar;
    OwnedFormat date;
    OwnedFormat time;
    OwnedRelativeFormat relative;
};

Region Region::ofSession() {
    const QLocale locale = QLocale::system();
    return {locale.language() == QLocale::C ? u"en"_s : locale.name(),
            QString::fromLatin1(QTimeZone::systemTimeZoneId())};
}

Calendar::Calendar(const Region &region) {
    const QByteArray locale = region.locale.toLatin1();
    m_parts = std::make_unique<Parts>(
        Parts{openCalendar(locale, region.timeZone), openFormat(UDAT_MEDIUM, locale, region.timeZone),
              openFormat(UDAT_PATTERN, locale, region.timeZone, u"HH:mm"_s), openRelative(locale)});
}

Calendar::~Calendar() = default;

Date Calendar::startOfDay(Date moment, int daysLater) const {
    UCalendar *calendar = m_parts->calendar.get();
    UErrorCode status = U_ZERO_ERROR;
    ucal_setMillis(calendar, icuDate(moment), &status);
    ucal_add(calendar, UCAL_DATE, daysLater, &status);
    for (const auto field : {UCAL_HOUR_OF_DAY, UCAL_MINUTE, UCAL_SECOND, UCAL_MILLISECOND})
        ucal_set(calendar, field, 0);
    return dateOf(ucal_getMillis(calendar, &status));
}

std::optional<int> Calendar::wholeDays(Date from, Date to) const {
    UErrorCode status = U_ZERO_ERROR;
    ucal_setMillis(m_parts->calendar.get(), icuDate(from), &status);
    const int32_t days = ucal_getFieldDifference(m_parts->calendar.get(), icuDate(to), UCAL_DATE, &status);
    return U_SUCCESS(status) ? std::optional(days) : std::nullopt;
}

QString Calendar::mediumDate(Date moment) const {
    return formatted(m_parts->date.get(), moment);
}

QString Calendar::timeOfDay(Date moment) const {
    return formatted(m_parts->time.get(), moment);
}

QString Calendar::timeAgo(Date moment, Date now) const {
    UErrorCode status = U_ZERO_ERROR;
    ucal_setMillis(m_parts->calendar.get(), icuDate(std::min(moment, now)), &status);
    int32_t count = 0;
    URelativeDateTimeUnit name = UDAT_REL_UNIT_SECOND;
    for (auto unit = kUnits.begin(); unit != kUnits.end() && count == 0; ++unit) {
        count = ucal_getFieldDifference(m_parts->calendar.get(), icuDate(now), unit->field, &status);
        name = unit->name;
    }
    return written([&](UChar *buffer, int32_t size, UErrorCode *error) {
        return ureldatefmt_formatNumeric(m_parts->relative.get(), -double(count), name, buffer, size, error);
    });
}

} // namespace velmo
