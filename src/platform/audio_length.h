#pragma once

#include "base/interface.h"

#include <QString>
#include <optional>

namespace velmo {

/// How long recordings in files are.
class AudioLength : public Interface {
public:
    /// Seconds of sound in the file, or nothing when the file cannot be read or its format is not known.
    [[nodiscard]] virtual std::optional<double> seconds(const QString &path) const = 0;
};

} // namespace velmo
