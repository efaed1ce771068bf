#pragma once

#include "base/interface.h"
#include "base/main_queue.h"

#include <QString>
#include <memory>
#include <optional>

namespace velmo {

/// Where a person is: what days, times and sorted lists look like.
struct Region {
    QString locale;   ///< As ICU writes it: "nb_NO".
    QString timeZone; ///< As the tz database names it: "Europe/Oslo".

    /// The desktop session's own, as it is now.
    [[nodiscard]] static Region ofSession();

    bool operator==(const Region &) const = default;
};

/// Days and times of the wall clock of a region, by its calendar; a day may have 23 or 25 hours. One thread.
class Calendar : private Unmovable {
public:
    explicit Calendar(const Region &region);
    ~Calendar();

    /// The first moment of the day that holds the moment, or of the day so many days later.
    [[nodiscard]] Date startOfDay(Date moment, int daysLater = 0) const;

    /// Days from one moment to the same time of day at most up to the other; a day short of an hour because
    /// the clocks changed is a whole day. Nothing where the calendar cannot tell.
    [[nodiscard]] std::optional<int> wholeDays(Date from, Date to) const;

    /// The date in the locale's medium style: "Nov 14, 2026", "14. nov. 2026".
    [[nodiscard]] QString mediumDate(Date moment) const;

    /// Hours and minutes, "09:05", of 24 hours in every locale.
    [[nodiscard]] QString timeOfDay(Date moment) const;

    /// How long ago in the locale's abbreviated style, by the largest unit that is full: "5 min. ago". A
    /// moment still to come, which a corrected clock can leave behind, counts as now.
    [[nodiscard]] QString timeAgo(Date moment, Date now) const;

private:
    struct Parts;
    std::unique_ptr<Parts> m_parts;
};

} // namespace velmo
