#pragma once

#include "base/interface.h"
#include "localservice/speech/speech_engine.h"
#include "localservice/speech/speech_recognition.h"
#include "localservice/speech/speech_session.h"

#include <condition_variable>
#include <deque>
#include <future>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

namespace velmo::localservice {

/// The engines of the service, each in a thread of its own, and the queue before them. A recording is refused
/// at once when too many wait already, or when it cannot be done in the time Velmo waits: a refusal that
/// comes at once is worth more than a text that comes too late.
class EnginePool final : public SpeechRecognition, private Unmovable {
public:
    /// Velmo gives an upload up after 30 s without a byte; the rest is for the way there and back.
    static constexpr std::chrono::seconds longestWait{25};
    static constexpr size_t mostWaiting = 8;

    /// Begins to make the first engine, in the background; recordings that come meanwhile wait for it.
    /// Further ones are made when recordings overlap: one person's never do, and an engine takes much memory.
    explicit EnginePool(EngineKind kind);
    /// Waits for the recordings being worked on.
    ~EnginePool() override;

    [[nodiscard]] QString description() const override { return m_kind.description; }
    [[nodiscard]] SpeechFacts facts() const override { return m_kind.facts; }
    [[nodiscard]] Result<void, QString> waitUntilReady() override;
    [[nodiscard]] bool isReady() const override;
    [[nodiscard]] std::optional<double> workPerSecond() const override;
    void warm(const QString &language) override;
    [[nodiscard]] SpeechOutcome transcribe(Upload upload, const std::function<bool()> &isGone = {}) override;
    [[nodiscard]] bool takesGrowingRecordings() const override { return m_kind.makeCutter != nullptr; }
    [[nodiscard]] Result<std::unique_ptr<SpeechSession>, Refusal>
    begin(Upload about, std::shared_ptr<Patience> patience) override;

    /// Puts a recording, or a piece of one, at the end of the queue. Any thread.
    [[nodiscard]] std::future<SpeechOutcome> enqueue(Speech speech, std::shared_ptr<Patience> patience);

    /// When so much sound that waits already cannot be done before the patience is over, as far as that is known. Any thread.
    [[nodiscard]] std::optional<Refusal> refusalForRest(double seconds, const Patience &patience) const;

private:
    using Clock = SpeechEngine::Clock;
    using Seconds = std::chrono::duration<double>;

    struct Job {
        Speech speech;
        std::shared_ptr<Patience> patience;
        Seconds work;
        std::promise<SpeechOutcome> done;
    };

    struct Worker {
        std::thread thread;
        Clock::time_point busyUntil; ///< By estimate.
    };

    void run(Worker &worker);
    [[nodiscard]] bool waitUntilNeeded(const Worker &worker);
    [[nodiscard]] std::unique_ptr<SpeechEngine> makeEngine(Worker &worker);
    void noteEngine(std::optional<double> workPerSecond);
    void noteFailure(Worker &worker, const QString &failure);
    enum class Task { Stop, Warm, Rest, Work };
    [[nodiscard]] Task nextTask(Worker &worker, const SpeechEngine &engine, Job &job);
    [[nodiscard]] Refusal tooSlow() const;
    [[nodiscard]] std::optional<Refusal> admit(const Sound &sound);
    void leave();
    void release(Worker &worker);
    [[nodiscard]] SpeechOutcome work(const Job &job, SpeechEngine &engine);
    void answer(Worker &worker, Job &job, SpeechEngine &engine);
    void learn(const Sound &sound, Seconds took);
    [[nodiscard]] Seconds workFor(const Sound &sound) const;
    [[nodiscard]] Clock::time_point freeAt(Clock::time_point now) const;

    const EngineKind m_kind;
    mutable std::mutex m_mutex; // of all below
    std::condition_variable m_changed;
    bool m_stopping = false;
    int m_engines = 0;
    size_t m_idleEngines = 0;
    QString m_failure; // of the first engine
    std::optional<double> m_workPerSecond;
    std::deque<Job> m_waiting;
    size_t m_recordings = 0;               ///< That are being waited for.
    std::optional<QString> m_warmLanguage; ///< For which the first engine is to get ready.
    std::deque<Worker> m_workers;
};

} // namespace velmo::localservice
