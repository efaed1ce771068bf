#pragma once

#include "base/main_queue.h"

#include <QString>
#include <optional>

namespace velmo {

/// A moment in UTC as ISO 8601 writes it: "2026-03-14T09:30:00Z", with a fraction of as many digits as it takes
/// ("2026-03-14T09:30:00.25Z").
[[nodiscard]] QString isoText(Date date);

/// The moment in such a text; an offset may stand in place of the "Z" ("+01:00"). Nothing where the text is another
/// one, names no day there is, or lies beyond what a Date can hold (some 250 years around 1970).
[[nodiscard]] std::optional<Date> dateFromIsoText(const QString &text);

} // namespace velmo
