#pragma once

#include "base/interface.h"
#include "base/result.h"

#include <QString>
#include <memory>
#include <span>

namespace velmo {

/// Why a file could not be made or written, as a sentence for the person.
struct RecordingFileFailure {
    QString description;
};

/// A recording that is being written: a WAVE file of 16-bit PCM, 16000 samples a second, one channel. What has been
/// written is readable at any moment, even when the process is killed. Dropping it completes the file. One thread at
/// a time.
class RecordingFile : public Interface {
public:
    /// Appends samples; what lies outside -1 to 1 is clipped. On a failure (a full disk) some of them are lost;
    /// later ones may fit again.
    virtual Result<void, RecordingFileFailure> write(std::span<const float> samples) = 0;
};

/// Recordings on disk. Each belongs to the process that made it until it is removed or the process ends, however it
/// ends. Any thread.
class RecordingFiles : public Interface {
public:
    /// Makes a new file that only its owner may read. A failure leaves no file behind.
    [[nodiscard]] virtual Result<std::unique_ptr<RecordingFile>, RecordingFileFailure>
    create(const QString &path) = 0;

    /// Removes a file that is done with; one that cannot be removed is left in silence.
    virtual void remove(const QString &path) = 0;

    /// Removes a recording of this user whose process has ended.
    /// @return whether it was removed.
    virtual bool removeIfAbandoned(const QString &path) = 0;
};

} // namespace velmo
