#pragma once

#include "base/interface.h"
#include "base/result.h"
#include "localservice/http/endpoint.h"
#include "localservice/http/multipart_form.h"
#include "localservice/speech/audio_decoder.h"
#include "service/transcription/transcription.h"

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

namespace velmo::localservice {

/// What an engine is given.
struct Speech {
    Upload upload;
    Sound sound; ///< Empty for engines that take the file as it was uploaded.
};

using SpeechOutcome = Result<Transcript, Refusal>;

/// Turns speech into text, one recording at a time. Used by one thread.
class SpeechEngine : public Interface {
public:
    using Clock = std::chrono::steady_clock;

    /// Measures how many seconds of work a second of speech takes, at once; nothing when that cannot be known
    /// ahead.
    [[nodiscard]] virtual std::optional<double> measureWorkPerSecond() = 0;

    /// Waits for the text. After the deadline nobody waits for it any more.
    [[nodiscard]] virtual SpeechOutcome transcribe(const Speech &speech, Clock::time_point deadline) = 0;
};

/// One kind of engine: what the service is started with.
struct EngineKind {
    QString description; ///< For the line that says the service is ready: "embedded engine, English".
    int instances = 1;   ///< At most; as many recordings are worked on at once.

    /// Makes one instance, or says in a sentence why it cannot be had. One thread at a time.
    std::function<Result<std::unique_ptr<SpeechEngine>, QString>()> make;

    /// Gets an upload ready for an instance, or refuses what no instance could do. Any thread.
    std::function<Result<Speech, Refusal>(Upload)> prepare;
};

} // namespace velmo::localservice
