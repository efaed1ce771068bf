#include "store/history_entry.h"

#include "base/json.h"

#include <QJsonDocument>
#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

using namespace std::chrono;

constexpr QLatin1StringView kId{"id"};
constexpr QLatin1StringView kText{"text"};
constexpr QLatin1StringView kTimestamp{"timestamp"};
constexpr QLatin1StringView kDuration{"durationSeconds"};

/// Where stored timestamps count from.
constexpr Date kReference = sys_days(January / 1 / 2001);

/// About 250 years: a Date, in nanoseconds around 1970, holds every moment this far from the reference.
constexpr double kFarthestSeconds = 8e9;

// Whole seconds and fraction are converted apart: together in one double, nanoseconds since 2001 would be off by
// more than the stored number can tell, and storing what was loaded would change it.

double storedTimestamp(Date date) {
    const auto sinceReference = date - kReference;
    const auto whole = floor<seconds>(sinceReference);
    return static_cast<double>(whole.count()) + duration<double>(sinceReference - whole).count();
}

Date dateOfTimestamp(double stored) {
    const double bounded = std::clamp(stored, -kFarthestSeconds, kFarthestSeconds);
    const double whole = std::floor(bounded);
    const auto fraction = nanoseconds(std::llround((bounded - whole) * 1e9));
    return kReference + duration_cast<Date::duration>(seconds(std::llround(whole)) + fraction);
}

QJsonObject encoded(const Entry &entry) {
    QJsonObject object{{kId, entry.id}, {kText, entry.text}, {kTimestamp, storedTimestamp(entry.timestamp)}};
    if (entry.durationSeconds)
        object.insert(kDuration, *entry.durationSeconds);
    return object;
}

Result<Entry, QString> decoded(const QJsonObject &object) {
    auto id = json::string(object, kId);
    if (!id)
        return failed(u"has no string \"id\""_s);
    auto text = json::string(object, kText);
    if (!text)
        return failed(u"has no string \"text\""_s);
    const QJsonValue timestamp = object.value(kTimestamp);
    if (!timestamp.isDouble())
        return failed(u"has no number \"timestamp\""_s);
    const QJsonValue duration = object.value(kDuration);
    if (!duration.isDouble() && !duration.isNull() && !duration.isUndefined())
        return failed(u"has a \"durationSeconds\" that is no number"_s);
    return Entry{std::move(*id), std::move(*text), dateOfTimestamp(timestamp.toDouble()),
                 duration.isDouble() ? std::optional(duration.toDouble()) : std::nullopt};
}

} // namespace

Result<QByteArray, QString> encodeEntries(const QList<Entry> &entries) {
    QJsonArray array;
    for (const Entry &entry : entries) {
        if (entry.durationSeconds && !std::isfinite(*entry.durationSeconds))
            return failed(u"entry %1 has a duration that is no number"_s.arg(array.size()));
        array.append(encoded(entry));
    }
    return json::compact(array);
}

Result<QList<Entry>, QString> decodeEntries(const QByteArray &stored) {
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(stored, &error);
    if (document.isNull())
        return failed(u"%1 at byte %2"_s.arg(error.errorString()).arg(error.offset));
    if (!document.isArray())
        return failed(u"it is no array"_s);
    QList<Entry> entries;
    for (const QJsonValueConstRef element : document.array()) {
        auto entry = decoded(element.toObject());
        if (!entry)
            return failed(u"entry %1 %2"_s.arg(entries.size()).arg(entry.error()));
        entries.append(std::move(*entry));
    }
    return entries;
}

} // namespace velmo
