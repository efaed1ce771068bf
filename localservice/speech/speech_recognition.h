#pragma once

#include "base/interface.h"
#include "localservice/speech/speech_engine.h"

#include <functional>
#include <memory>
#include <optional>

namespace velmo::localservice {

class SpeechSession;

/// What the service recognises speech with. Any thread, several at once.
class SpeechRecognition : public Interface {
public:
    /// For the line that says the service is ready.
    [[nodiscard]] virtual QString description() const = 0;

    /// As it is now.
    [[nodiscard]] virtual SpeechFacts facts() const = 0;

    /// Waits until recordings are recognised without delay; a sentence when they cannot be.
    [[nodiscard]] virtual Result<void, QString> waitUntilReady() = 0;
    [[nodiscard]] virtual bool isReady() const = 0;

    /// Seconds of work for a second of speech, when that is known.
    [[nodiscard]] virtual std::optional<double> workPerSecond() const = 0;

    /// Somebody has begun to speak, in that language unless it is empty: gets ready in the background what it will take.
    virtual void warm(const QString &language) = 0;

    /// Waits for the text of a recording; given up when `isGone` says that nobody waits for it any more.
    [[nodiscard]] virtual SpeechOutcome transcribe(Upload upload, const std::function<bool()> &isGone) = 0;

    /// Whether `begin` can be had.
    [[nodiscard]] virtual bool takesGrowingRecordings() const = 0;

    /// Begins with a recording whose sound will be appended as it comes; `about` goes without the file.
    [[nodiscard]] virtual Result<std::unique_ptr<SpeechSession>, Refusal>
    begin(Upload about, std::shared_ptr<Patience> patience) = 0;
};

} // namespace velmo::localservice
