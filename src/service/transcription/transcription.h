#pragma once

#include "base/interface.h"
#include "base/result.h"
#include "service/wire/transcription_error.h"

#include <QString>
#include <functional>
#include <optional>

namespace velmo {

/// What a recording is transcribed with.
struct TranscriptionSettings {
    QString language;              ///< The primary language code.
    QString languages;             ///< The selected codes as stored, separated by commas.
    std::optional<QString> prompt; ///< Hint words joined with ", ".

    bool operator==(const TranscriptionSettings &) const = default;
};

struct Transcript {
    QString text;                            ///< As received, untrimmed.
    std::optional<QString> detectedLanguage; ///< A code as the service reports it.
};

using TranscriptionResult = Result<Transcript, TranscriptionError>;

/// Turns recordings into text.
class Transcriber : public Interface {
public:
    using Completion = std::function<void(TranscriptionResult)>;

    /// A recording has begun (or goes on): whatever an upload will need can be got ready. Returns at once.
    virtual void prepare() = 0;

    /// What has been heard so far, as it may still change. On another thread.
    using Heard = std::function<void(const QString &text)>;

    /// A recording that is being written to the path can be uploaded while it grows, so that after its end little is left
    /// to do. The next `transcribe` is told of the same path and settings, or `abandon` is called. Where `heard` is given, it is
    /// told what the service has heard so far. Main thread; returns at once.
    virtual void follow(const QString &path, const TranscriptionSettings &settings, Heard heard) = 0;

    /// What is followed will not be transcribed. Main thread.
    virtual void abandon() = 0;

    /// Main thread; the completion comes exactly once: for a file that is missing, too small, too large or
    /// cannot be opened before this returns, on the caller's thread; for everything else on another thread. The file is read,
    /// never removed; once this has returned it may be.
    virtual void transcribe(const QString &path, const TranscriptionSettings &settings,
                            Completion completion) = 0;
};

} // namespace velmo
