#pragma once

#include <QByteArray>

namespace velmo::localservice {

/// On how many threads to work now: one for each processor that nobody else uses, two at least where there are two. They
/// wait for one another, so that one too many slows down all.
[[nodiscard]] int threadsForWork();

/// The same, of what the kernel says in /proc/loadavg ("0.20 0.18 0.12 3/80 11206": 3 run, this thread among them).
[[nodiscard]] int threadsForWork(int processors, const QByteArray &load);

} // namespace velmo::localservice
