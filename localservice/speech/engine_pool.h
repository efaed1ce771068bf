#pragma once

#include "base/interface.h"
#include "localservice/speech/speech_engine.h"

#include <condition_variable>
#include <deque>
#include <future>
#include <mutex>
#include <thread>
#include <vector>

namespace velmo::localservice {

/// The engines of the service, each in a thread of its own, and the queue before them. A recording is refused
/// at once when too many wait already, or when it cannot be done in the time Velmo waits: a refusal that
/// comes at once is worth more than a text that comes too late.
class EnginePool : private Unmovable {
public:
    /// Velmo gives an upload up after 30 s without a byte; the rest is for the way there and back.
    static constexpr std::chrono::seconds longestWait{25};
    static constexpr size_t mostWaiting = 8;

    /// Begins to make the first engine, in the background; recordings that come meanwhile wait for it.
    /// Further ones are made when recordings overlap: one person's never do, and an engine takes much memory.
    explicit EnginePool(EngineKind kind);
    /// Waits for the recordings being worked on.
    ~EnginePool();

    [[nodiscard]] const QString &description() const { return m_kind.description; }

    /// Waits until the first engine can work; a sentence when it cannot be had. Any thread.
    [[nodiscard]] Result<void, QString> waitUntilReady();

    /// Whether the first engine can work by now. Any thread.
    [[nodiscard]] bool isReady() const;

    /// Seconds of work for a second of speech, when that is known.
    [[nodiscard]] std::optional<double> workPerSecond() const;

    /// Waits for the text of a recording. Any thread, several at once.
    [[nodiscard]] SpeechOutcome transcribe(Upload upload);

private:
    using Clock = SpeechEngine::Clock;
    using Seconds = std::chrono::duration<double>;

    struct Job {
        Speech speech;
        Clock::time_point deadline;
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
    [[nodiscard]] bool takeJob(Worker &worker, Job &job);
    void release(Worker &worker);
    [[nodiscard]] SpeechOutcome work(const Job &job, SpeechEngine &engine);
    void learn(const Sound &sound, Seconds took);
    [[nodiscard]] Seconds workFor(const Sound &sound) const;
    [[nodiscard]] Clock::time_point freeAt(Clock::time_point now) const;
    [[nodiscard]] std::optional<Refusal> refusalFor(Seconds work, Clock::time_point now) const;

    const EngineKind m_kind;
    mutable std::mutex m_mutex; // of all below
    std::condition_variable m_changed;
    bool m_stopping = false;
    int m_engines = 0;
    size_t m_idleEngines = 0;
    QString m_failure; // of the first engine
    std::optional<double> m_workPerSecond;
    std::deque<Job> m_waiting;
    std::deque<Worker> m_workers;
};

} // namespace velmo::localservice
