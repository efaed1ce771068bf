#pragma once

#include "localservice/models/download.h"

#include <QString>
#include <chrono>

namespace velmo::localservice {

/// Shows on standard error how a download goes on: one line that moves on a terminal, else a line at each tenth.
class DownloadDisplay {
public:
    explicit DownloadDisplay(QString name);

    void show(const DownloadProgress &progress);
    void end();

private:
    using Clock = std::chrono::steady_clock;

    void write(const DownloadProgress &progress, Clock::time_point now);

    QString m_name;
    bool m_isTerminal;
    Clock::time_point m_begun = Clock::now();
    Clock::time_point m_shown;
    qint64 m_first = -1; ///< What had been received when it began.
    qint64 m_tenth = -1;
};

/// "base: 45 % of 142 MiB, 3.2 MiB/s, 25 s left", of what came in so many seconds.
[[nodiscard]] QString downloadLine(const QString &name, const DownloadProgress &progress, qint64 cameNow,
                                   double seconds);

} // namespace velmo::localservice
