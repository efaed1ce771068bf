#include "localservice/speech/engine_pool.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <latch>

using namespace Qt::StringLiterals;

namespace velmo::localservice {

namespace {

using ::testing::HasSubstr;

/// What the engines of a test do: they hold every recording back until they are let go.
struct Script {
    std::optional<double> workPerSecond;
    std::latch letGo{1};
    std::mutex mutex;
    std::condition_variable changed;
    int made = 0;
    int begun = 0;

    void waitUntilBegun(int count) {
        std::unique_lock lock(mutex);
        changed.wait(lock, [&] { return begun >= count; });
    }
};

class HeldEngine final : public SpeechEngine {
public:
    explicit HeldEngine(Script &script) : m_script(script) {}

    std::optional<double> measureWorkPerSecond() override { return m_script.workPerSecond; }

    SpeechOutcome transcribe(const Speech &speech, const Patience &) override {
        {
            const std::lock_guard lock(m_script.mutex);
            ++m_script.begun;
            m_script.changed.notify_all();
        }
        m_script.letGo.wait();
        return Transcript{speech.upload.prompt, std::nullopt};
    }

private:
    Script &m_script;
};

/// Engines for recordings of as many seconds as their "language" says.
EngineKind heldEngines(Script &script, int instances = 1) {
    EngineKind kind;
    kind.instances = instances;
    kind.remedy = u"Use --speech-url."_s;
    kind.make = [&script]() -> Result<std::unique_ptr<SpeechEngine>, QString> {
        const std::lock_guard lock(script.mutex);
        ++script.made;
        return std::make_unique<HeldEngine>(script);
    };
    kind.prepare = [](const Upload &upload) -> Result<Speech, Refusal> {
        Speech speech{upload, {}};
        speech.sound.samples.resize(upload.language.toUInt() * Sound::samplesPerSecond);
        return speech;
    };
    return kind;
}

Upload recording(int seconds, const QString &text = {}) {
    Upload upload;
    upload.language = QString::number(seconds);
    upload.prompt = text;
    return upload;
}

/// Recordings that are being waited for.
class Waiting {
public:
    explicit Waiting(EnginePool &pool) : m_pool(pool) {}

    void add(int seconds) {
        m_outcomes.push_back(std::async(std::launch::async, [this, seconds] {
            return m_pool.transcribe(recording(seconds, u"done"_s));
        }));
    }

    int count() const { return static_cast<int>(m_outcomes.size()); }

    void expectAllDone() {
        for (auto &outcome : m_outcomes)
            EXPECT_EQ(outcome.get().value_or(Transcript()).text, u"done"_s);
    }

private:
    EnginePool &m_pool;
    std::vector<std::future<SpeechOutcome>> m_outcomes;
};

int statusOf(const SpeechOutcome &outcome) {
    return outcome ? 200 : outcome.error().status;
}

} // namespace

TEST(EnginePool, RefusesBeyondTheBoundOfItsQueue) {
    Script script;
    EnginePool pool(heldEngines(script));
    Waiting waiting(pool);
    waiting.add(1);
    script.waitUntilBegun(1);
    // Each either waits or finds the queue full; the engine is held, so none can end otherwise.
    std::vector<std::future<SpeechOutcome>> others;
    for (size_t count = 0; count < EnginePool::mostWaiting + 3; ++count)
        others.push_back(std::async(std::launch::async, [&pool] { return pool.transcribe(recording(1)); }));

    int refused = 0;
    while (refused < 3) {
        for (auto &other : others) {
            if (other.valid() && other.wait_for(std::chrono::milliseconds(1)) == std::future_status::ready) {
                EXPECT_EQ(statusOf(other.get()), 503);
                ++refused;
            }
        }
    }
    script.letGo.count_down();
    for (auto &other : others) {
        if (other.valid()) {
            EXPECT_EQ(statusOf(other.get()), 200);
        }
    }
    waiting.expectAllDone();
}

TEST(EnginePool, RefusesAtOnceWhatCannotBeDoneInTime) {
    Script script;
    script.workPerSecond = 1;
    EnginePool pool(heldEngines(script));
    ASSERT_TRUE(pool.waitUntilReady());

    const auto outcome = pool.transcribe(recording(25));

    EXPECT_EQ(statusOf(outcome), 422);
    EXPECT_THAT(outcome.error().sentence.toStdString(), HasSubstr("--speech-url"));
    script.letGo.count_down();
    EXPECT_EQ(statusOf(pool.transcribe(recording(15))), 200);
}

TEST(EnginePool, CountsTheWaitForTheEngine) {
    Script script;
    script.workPerSecond = 1;
    EnginePool pool(heldEngines(script));
    Waiting waiting(pool);
    waiting.add(12);
    script.waitUntilBegun(1);

    EXPECT_EQ(statusOf(pool.transcribe(recording(12))), 422);
    script.letGo.count_down();
    waiting.expectAllDone();
}

TEST(EnginePool, MakesAnotherEngineOnlyWhenRecordingsOverlap) {
    Script script;
    EnginePool pool(heldEngines(script, 2));
    Waiting waiting(pool);
    waiting.add(1);
    script.waitUntilBegun(1);
    EXPECT_EQ(script.made, 1);
    waiting.add(1);
    script.waitUntilBegun(2);
    EXPECT_EQ(script.made, 2);
    script.letGo.count_down();
    waiting.expectAllDone();
}

TEST(EnginePool, SaysWhyThereIsNoEngine) {
    EngineKind kind;
    kind.make = []() -> Result<std::unique_ptr<SpeechEngine>, QString> { return failed(u"No model."_s); };
    kind.prepare = [](const Upload &upload) -> Result<Speech, Refusal> { return Speech{upload, {}}; };
    EnginePool pool(kind);

    EXPECT_EQ(pool.waitUntilReady().error(), u"No model."_s);
    EXPECT_FALSE(pool.isReady());
    EXPECT_EQ(statusOf(pool.transcribe(recording(1))), 503);
}

} // namespace velmo::localservice
