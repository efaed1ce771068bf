#pragma once

#include <QString>
#include <optional>

namespace velmo {

/// How long recordings in files are.
class AudioLength {
public:
    AudioLength() = default;
    AudioLength(const AudioLength &) = delete;
    AudioLength &operator=(const AudioLength &) = delete;
    virtual ~AudioLength() = default;

    /// Seconds of sound in the file, or nothing when the file cannot be read or its format is not known.
    [[nodiscard]] virtual std::optional<double> seconds(const QString &path) const = 0;
};

} // namespace velmo
