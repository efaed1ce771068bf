#pragma once

#include "base/interface.h"
#include "base/result.h"

#include <QString>
#include <optional>

namespace velmo {

/// Why a recording could not begin, as a sentence for the person.
struct RecordingFailure {
    QString description;
};

/// Records the microphone into files. Start and stop on the main thread.
class Recorder : public Interface {
public:
    /// Begins a new file and answers its path.
    [[nodiscard]] virtual Result<QString, RecordingFailure> startRecording() = 0;

    /// Ends the recording and answers the path of its complete file; nothing when none was running.
    [[nodiscard]] virtual std::optional<QString> stopRecording() = 0;

    /// Removes a recording that is done with; a file that cannot be removed is left in silence. Any thread.
    virtual void deleteRecording(const QString &path) = 0;
};

} // namespace velmo
