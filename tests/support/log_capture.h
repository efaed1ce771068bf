#pragma once

#include "base/interface.h"

#include <QStringList>
#include <mutex>

namespace velmo::testing {

/// Collects log lines for as long as it lives.
class LogCapture : private Unmovable {
public:
    LogCapture();
    ~LogCapture();

    [[nodiscard]] QStringList lines() const;
    [[nodiscard]] bool contains(const QString &line) const { return lines().contains(line); }
    void clear();

private:
    mutable std::mutex m_mutex;
    QStringList m_lines;
};

} // namespace velmo::testing
