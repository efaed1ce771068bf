#pragma once

#include "base/interface.h"

#include <QString>
#include <optional>

namespace velmo {

/// Where the texts of dictations are remembered. Main thread.
class DictationHistory : public Interface {
public:
    /// Remembers an inserted text; `durationSeconds` is the length of its recording where that is known.
    virtual void add(const QString &text, std::optional<double> durationSeconds) = 0;
};

} // namespace velmo
