#include "localservice/speech/engine_pool.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace velmo::localservice {

namespace {

// Speech differs: some makes twice the work of other.
constexpr double kMargin = 1.25;
// What short recordings take says little about long ones.
constexpr double kShortestTellingSeconds = 1;
// How much one recording changes the estimate.
constexpr double kNewShare = 0.3;

Refusal queueFull() {
    return {503, u"Too many recordings are waiting for the speech engine. Try again in a moment."_s};
}

Refusal tooSlow() {
    return {422, u"The embedded speech engine cannot finish this recording within %1 seconds. "
                 "Record less at a time, or start velmo-local-service with --speech-url to use a "
                 "faster speech server."_s.arg(EnginePool::longestWait.count())};
}

Refusal tooLate() {
    return {503, u"The speech engine did not get to this recording in time."_s};
}

} // namespace

EnginePool::EnginePool(EngineKind kind) : m_kind(std::move(kind)) {
    const std::lock_guard lock(m_mutex);
    for (int count = 0; count < m_kind.instances; ++count) {
        Worker &worker = m_workers.emplace_back();
        worker.thread = std::thread([this, &worker] { run(worker); });
    }
}

EnginePool::~EnginePool() {
    {
        const std::lock_guard lock(m_mutex);
        m_stopping = true;
        m_changed.notify_all();
    }
    for (Worker &worker : m_workers)
        worker.thread.join();
}

Result<void, QString> EnginePool::waitUntilReady() {
    std::unique_lock lock(m_mutex);
    m_changed.wait(lock, [this] { return m_engines > 0 || !m_failure.isEmpty(); });
    if (m_engines == 0)
        return failed(m_failure);
    return {};
}

bool EnginePool::isReady() const {
    const std::lock_guard lock(m_mutex);
    return m_engines > 0;
}

std::optional<double> EnginePool::workPerSecond() const {
    const std::lock_guard lock(m_mutex);
    return m_workPerSecond;
}

SpeechOutcome EnginePool::transcribe(Upload upload) {
    auto speech = m_kind.prepare(std::move(upload));
    if (!speech)
        return failed(speech.error());
    const auto arrived = Clock::now();
    if (const auto ready = waitUntilReady(); !ready)
        return failed(Refusal{503, ready.error()});

    std::future<SpeechOutcome> done;
    {
        const std::lock_guard lock(m_mutex);
        const Seconds work = workFor(speech->sound);
        if (const auto refusal = refusalFor(work, Clock::now()))
            return failed(*refusal);
        Job &job = m_waiting.emplace_back(Job{std::move(*speech), arrived + longestWait, work, {}});
        done = job.done.get_future();
        m_changed.notify_all();
    }
    return done.get();
}

EnginePool::Seconds EnginePool::workFor(const Sound &sound) const {
    return Seconds(sound.seconds() * m_workPerSecond.value_or(0) * kMargin);
}

/// When a recording that comes now would have an engine for itself, by estimate.
EnginePool::Clock::time_point EnginePool::freeAt(Clock::time_point now) const {
    std::vector<Clock::time_point> free;
    for (const Worker &worker : m_workers)
        free.push_back(std::max(worker.busyUntil, now));
    for (const Job &job : m_waiting)
        *std::min_element(free.begin(), free.end()) += std::chrono::duration_cast<Clock::duration>(job.work);
    return *std::min_element(free.begin(), free.end());
}

std::optional<Refusal> EnginePool::refusalFor(Seconds work, Clock::time_point now) const {
    if (m_waiting.size() >= mostWaiting)
        return queueFull();
    if (freeAt(now) + work > now + longestWait)
        return tooSlow();
    return std::nullopt;
}

void EnginePool::run(Worker &worker) {
    if (!waitUntilNeeded(worker))
        return;
    const auto engine = makeEngine(worker);
    if (!engine)
        return;
    Job job;
    while (takeJob(worker, job)) {
        auto outcome = work(job, *engine);
        // First free, then answer: the same person's next recording is to find this engine idle.
        release(worker);
        job.done.set_value(std::move(outcome));
    }
}

bool EnginePool::waitUntilNeeded(const Worker &worker) {
    std::unique_lock lock(m_mutex);
    if (&worker == &m_workers.front())
        return true;
    m_changed.wait(lock, [this] { return m_stopping || m_waiting.size() > m_idleEngines; });
    return !m_stopping;
}

std::unique_ptr<SpeechEngine> EnginePool::makeEngine(Worker &worker) {
    auto engine = m_kind.make();
    if (!engine) {
        noteFailure(worker, engine.error());
        return nullptr;
    }
    // One measures for all.
    noteEngine(workPerSecond() ? std::nullopt : (*engine)->measureWorkPerSecond());
    return std::move(*engine);
}

void EnginePool::noteEngine(std::optional<double> workPerSecond) {
    const std::lock_guard lock(m_mutex);
    ++m_engines;
    ++m_idleEngines;
    if (workPerSecond)
        m_workPerSecond = workPerSecond;
    m_changed.notify_all();
}

void EnginePool::noteFailure(Worker &worker, const QString &failure) {
    const std::lock_guard lock(m_mutex);
    if (m_engines == 0)
        m_failure = failure;
    worker.busyUntil = Clock::time_point::max(); // nothing is planned for it
    m_changed.notify_all();
}

bool EnginePool::takeJob(Worker &worker, Job &job) {
    std::unique_lock lock(m_mutex);
    m_changed.wait(lock, [this] { return m_stopping || !m_waiting.empty(); });
    if (m_waiting.empty())
        return false;
    --m_idleEngines;
    job = std::move(m_waiting.front());
    m_waiting.pop_front();
    worker.busyUntil = Clock::now() + std::chrono::duration_cast<Clock::duration>(job.work);
    return true;
}

void EnginePool::release(Worker &worker) {
    const std::lock_guard lock(m_mutex);
    worker.busyUntil = Clock::time_point();
    ++m_idleEngines;
}

SpeechOutcome EnginePool::work(const Job &job, SpeechEngine &engine) {
    const auto begun = Clock::now();
    if (begun >= job.deadline)
        return failed(tooLate());
    auto outcome = engine.transcribe(job.speech, job.deadline);
    learn(job.speech.sound, Clock::now() - begun);
    return outcome;
}

void EnginePool::learn(const Sound &sound, Seconds took) {
    const std::lock_guard lock(m_mutex);
    if (m_workPerSecond && sound.seconds() >= kShortestTellingSeconds)
        *m_workPerSecond += kNewShare * (took.count() / sound.seconds() - *m_workPerSecond);
}

} // namespace velmo::localservice
