#pragma once

#include "base/main_queue.h"
#include "base/result.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <optional>

namespace velmo {

/// One inserted text of the history.
struct Entry {
    QString id; ///< A UUID in upper case.
    QString text;
    Date timestamp;                        ///< When it was added.
    std::optional<double> durationSeconds; ///< The length of its recording, where known.

    bool operator==(const Entry &) const = default;
};

/// The stored form of a history: a JSON array of objects with "id", "text", "timestamp" and, where it is known,
/// "durationSeconds". A timestamp is the number of seconds since 2001-01-01 00:00:00 UTC, with fractions. The
/// failure, a duration that is no number, is a sentence.
[[nodiscard]] Result<QByteArray, QString> encodeEntries(const QList<Entry> &entries);

/// Reads the stored form, in its order. The failure is a sentence that names the piece at fault and carries none
/// of the texts. A timestamp beyond what a Date can hold is moved to its edge.
[[nodiscard]] Result<QList<Entry>, QString> decodeEntries(const QByteArray &stored);

} // namespace velmo
