#pragma once

#include "base/interface.h"
#include "base/result.h"
#include "localservice/http/endpoint.h"
#include "localservice/http/multipart_form.h"
#include "localservice/speech/audio_decoder.h"
#include "localservice/speech/language_choice.h"
#include "localservice/speech/patience.h"
#include "localservice/speech/sound_cutter.h"
#include "service/transcription/transcription.h"

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

namespace velmo::localservice {

/// What an engine is given: a recording, or a piece of one.
struct Speech {
    Upload upload;           ///< What goes with the recording; of a piece, without the file.
    Sound sound = {};        ///< Empty for engines that take the file as it was uploaded.
    double voiceSeconds = 0; ///< Of the sound, where the voice detector heard it.
    std::shared_ptr<LanguageChoice> choice =
        {}; ///< Of the recording this is a piece of; null: of this alone.
};

using SpeechOutcome = Result<Transcript, Refusal>;

/// Turns speech into text, one recording or piece at a time. Used by one thread.
class SpeechEngine : public Interface {
public:
    using Clock = std::chrono::steady_clock;

    /// Gets ready for speech in that language, so that the text comes without delay; or refuses what it could not do.
    [[nodiscard]] virtual Result<void, Refusal> warm(const QString & /*language*/) { return {}; }

    /// When it has been idle for long enough to give back what it keeps ready; nothing while it keeps nothing.
    [[nodiscard]] virtual std::optional<Clock::time_point> restsAt() const { return std::nullopt; }
    virtual void rest() {}

    /// Measures how many seconds of work a second of speech takes, at once; nothing when that cannot be known
    /// ahead.
    [[nodiscard]] virtual std::optional<double> measureWorkPerSecond() = 0;

    /// Waits for the text. Once the patience is over nobody waits for it any more.
    [[nodiscard]] virtual SpeechOutcome transcribe(const Speech &speech, const Patience &patience) = 0;
};

/// What a program can be told about an engine.
struct SpeechFacts {
    QString engine;     ///< "Whisper", "PocketSphinx" or "server".
    QString model = {}; ///< Its name; empty when it is not ours to know.
    QStringList languages =
        {}; ///< Codes of those among Velmo's that it understands; empty when that is not known.
};

/// One kind of engine: what the service is started with.
struct EngineKind {
    SpeechFacts facts;
    QString description; ///< For the line that says the service is ready: "embedded engine, English".
    int instances = 1;   ///< At most; as many recordings are worked on at once.
    QString remedy = {}; ///< What to do about a recording that takes it too long, in a sentence.

    /// Makes one instance, or says in a sentence why it cannot be had. One thread at a time.
    std::function<Result<std::unique_ptr<SpeechEngine>, QString>()> make;

    /// Gets an upload ready for an instance, or refuses what no instance could do. Any thread.
    std::function<Result<Speech, Refusal>(Upload)> prepare;

    /// Makes what cuts sound into the pieces that an instance is given. Null: it is given the upload as a whole. Any thread.
    std::function<std::unique_ptr<SoundCutter>()> makeCutter = {};
};

} // namespace velmo::localservice
