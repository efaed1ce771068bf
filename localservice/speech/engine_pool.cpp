#include "localservice/speech/engine_pool.h"

#include <algorithm>
#include <cmath>
#include <utility>

using namespace Qt::StringLiterals;

namespace velmo::localservice {

namespace {

// Speech differs: some makes twice the work of other.
constexpr double kMargin = 1.25;
// What short recordings take says little about long ones.
constexpr double kShortestTellingSeconds = 3;
// How much one recording changes the estimate.
constexpr double kNewShare = 0.3;

Refusal queueFull() {
    return {503, u"Too many recordings are waiting for the speech engine. Try again in a moment."_s};
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

void EnginePool::warm(const QString &language) {
    const std::lock_guard lock(m_mutex);
    m_warmLanguage = language;
    m_changed.notify_all();
}

SpeechOutcome EnginePool::transcribe(Upload upload, const std::function<bool()> &isGone) {
    auto speech = m_kind.prepare(std::move(upload));
    if (!speech)
        return failed(speech.error());
    const auto patience = std::make_shared<Patience>(Clock::now() + longestWait);
    if (const auto ready = waitUntilReady(); !ready)
        return failed(Refusal{503, ready.error()});
    if (const auto refusal = admit(speech->sound))
        return failed(*refusal);
    SpeechOutcome outcome;
    if (m_kind.makeCutter) {
        SpeechSession session(*this, m_kind.makeCutter(), std::move(speech->upload), patience);
        session.append(speech->sound.samples);
        outcome = session.finish(isGone);
    } else {
        outcome = enqueue(std::move(*speech), patience).get();
    }
    leave();
    return outcome;
}

Result<std::unique_ptr<SpeechSession>, Refusal> EnginePool::begin(Upload about,
                                                                  std::shared_ptr<Patience> patience) {
    if (!m_kind.makeCutter)
        return failed(Refusal{501, u"This speech engine takes whole recordings only."_s});
    return std::make_unique<SpeechSession>(*this, m_kind.makeCutter(), std::move(about), std::move(patience));
}

std::future<SpeechOutcome> EnginePool::enqueue(Speech speech, std::shared_ptr<Patience> patience) {
    const std::lock_guard lock(m_mutex);
    const Seconds work = workFor(speech.sound);
    Job &job = m_waiting.emplace_back(Job{std::move(speech), std::move(patience), work, {}});
    m_changed.notify_all();
    return job.done.get_future();
}

/// Lets a recording in, unless too many are there or it could not be done in time.
std::optional<Refusal> EnginePool::admit(const Sound &sound) {
    const std::lock_guard lock(m_mutex);
    if (m_recordings >= mostWaiting + m_workers.size())
        return queueFull();
    const auto now = Clock::now();
    if (freeAt(now) + workFor(sound) > now + longestWait)
        return tooSlow();
    ++m_recordings;
    return std::nullopt;
}

void EnginePool::leave() {
    const std::lock_guard lock(m_mutex);
    --m_recordings;
}

std::optional<Refusal> EnginePool::refusalForRest(double seconds, const Patience &patience) const {
    const std::lock_guard lock(m_mutex);
    const auto end = patience.end();
    if (end == Clock::time_point::max() ||
        Clock::now() + Seconds(seconds * m_workPerSecond.value_or(0)) <= end)
        return std::nullopt;
    return tooSlow();
}

Refusal EnginePool::tooSlow() const {
    return {422, u"The embedded speech engine cannot finish this recording within %1 seconds. %2"_s.arg(
                     QString::number(longestWait.count()), m_kind.remedy)};
}

EnginePool::Seconds EnginePool::workFor(const Sound &sound) const {
    // What comes in pieces needs no margin: it is seen on the way whether the time suffices.
    const double margin = m_kind.makeCutter ? 1 : kMargin;
    return Seconds(sound.seconds() * m_workPerSecond.value_or(0) * margin);
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

void EnginePool::run(Worker &worker) {
    if (!waitUntilNeeded(worker))
        return;
    const auto engine = makeEngine(worker);
    if (!engine)
        return;
    for (;;) {
        Job job;
        switch (nextTask(worker, *engine, job)) {
        case Task::Stop:
            return;
        case Task::Warm:
            static_cast<void>(engine->warm(job.speech.upload.language));
            break;
        case Task::Rest:
            engine->rest();
            break;
        case Task::Work:
            answer(worker, job, *engine);
            break;
        }
    }
}

void EnginePool::answer(Worker &worker, Job &job, SpeechEngine &engine) {
    auto outcome = work(job, engine);
    // First free, then answer: the same person's next recording is to find this engine idle.
    release(worker);
    job.done.set_value(std::move(outcome));
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

/// Waits for something to do. Recordings go before all else; what waits is still done when the pool ends.
EnginePool::Task EnginePool::nextTask(Worker &worker, const SpeechEngine &engine, Job &job) {
    std::unique_lock lock(m_mutex);
    const auto hasTask = [&] {
        return m_stopping || !m_waiting.empty() || (m_warmLanguage && &worker == &m_workers.front());
    };
    const auto rest = engine.restsAt();
    if (!rest)
        m_changed.wait(lock, hasTask);
    else if (!m_changed.wait_until(lock, *rest, hasTask))
        return Task::Rest;
    if (!m_waiting.empty()) {
        --m_idleEngines;
        job = std::move(m_waiting.front());
        m_waiting.pop_front();
        worker.busyUntil = Clock::now() + std::chrono::duration_cast<Clock::duration>(job.work);
        return Task::Work;
    }
    if (m_stopping)
        return Task::Stop;
    job.speech.upload.language = *std::exchange(m_warmLanguage, std::nullopt);
    return Task::Warm;
}

void EnginePool::release(Worker &worker) {
    const std::lock_guard lock(m_mutex);
    worker.busyUntil = Clock::time_point();
    ++m_idleEngines;
}

SpeechOutcome EnginePool::work(const Job &job, SpeechEngine &engine) {
    if (job.patience->isOver())
        return failed(tooLate());
    if (const auto ready = engine.warm(job.speech.upload.language); !ready)
        return failed(ready.error());
    const auto begun = Clock::now();
    auto outcome = engine.transcribe(job.speech, *job.patience);
    if (outcome)
        learn(job.speech.sound, Clock::now() - begun);
    return outcome;
}

void EnginePool::learn(const Sound &sound, Seconds took) {
    if (sound.seconds() < kShortestTellingSeconds)
        return;
    const std::lock_guard lock(m_mutex);
    const double work = took.count() / sound.seconds();
    m_workPerSecond = std::lerp(m_workPerSecond.value_or(work), work, kNewShare);
}

} // namespace velmo::localservice
