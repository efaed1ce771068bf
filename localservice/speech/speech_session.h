#pragma once

#include "base/interface.h"
#include "localservice/speech/speech_engine.h"

#include <future>
#include <mutex>
#include <vector>

namespace velmo::localservice {

class EnginePool;

/// A recording that is recognised as it comes: at each pause what was said before it goes to an engine, so that after the
/// end only the last piece is left to do. Sound is appended, and the end told, by one thread.
class SpeechSession : private Unmovable {
public:
    /// `about` is what goes with the recording, `cutter` makes its pieces; the pool must outlive the session.
    SpeechSession(EnginePool &pool, std::unique_ptr<SoundCutter> cutter, Upload about,
                  std::shared_ptr<Patience> patience);
    /// What is still waiting is given up.
    ~SpeechSession();

    void append(std::span<const int16_t> samples);

    /// What has been recognised so far. Any thread.
    [[nodiscard]] QString partialText();

    /// No more sound comes: waits for the text, until the patience is over or `isGone` says that nobody waits for it.
    [[nodiscard]] SpeechOutcome finish(const std::function<bool()> &isGone = {});

private:
    struct Piece {
        double seconds;
        std::shared_future<SpeechOutcome> outcome;
        QString text = {};
        bool isDone = false;
    };

    /// What is not done yet.
    struct Rest {
        std::shared_future<SpeechOutcome> next;
        double seconds = 0; ///< Of sound.
    };

    void enqueue(std::vector<SoundPiece> pieces);
    [[nodiscard]] bool takeIfDone(Piece &piece);
    [[nodiscard]] std::optional<Rest> rest();

    EnginePool &m_pool;
    const std::unique_ptr<SoundCutter> m_cutter;
    Speech m_about;
    const std::shared_ptr<Patience> m_patience;
    std::mutex m_mutex; // of what follows
    std::vector<Piece> m_pieces;
    std::optional<Refusal> m_refusal; ///< Of the first piece that was refused.
    std::optional<QString> m_language;
};

} // namespace velmo::localservice
