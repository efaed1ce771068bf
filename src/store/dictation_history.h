#pragma once

#include <QString>
#include <optional>

namespace velmo {

/// Where the texts of dictations are remembered. Main thread.
class DictationHistory {
public:
    DictationHistory() = default;
    DictationHistory(const DictationHistory &) = delete;
    DictationHistory &operator=(const DictationHistory &) = delete;
    virtual ~DictationHistory() = default;

    /// Remembers an inserted text; `durationSeconds` is the length of its recording where that is known.
    virtual void add(const QString &text, std::optional<double> durationSeconds) = 0;
};

} // namespace velmo
