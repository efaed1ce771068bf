#include "dictation/capture/audio_level_provider.h"

#include "dictation/capture/recorder.h"
#include "support/manual_main_queue.h"

#include <gmock/gmock.h>

using namespace std::chrono_literals;
using ::testing::Each;
using ::testing::Pointwise;

namespace velmo {

namespace {

/// The shape of the row for a steady level, leftmost first.
const QList<double> kShape = {0.6, 0.68, 0.76, 0.84, 0.92, 1.0, 0.92, 0.84, 0.76, 0.68};

QList<double> shapeTimes(double level) {
    QList<double> row = kShape;
    for (double &height : row)
        height *= level;
    return row;
}

struct FakeLevels final : AudioLevelSource {};

class AudioLevelProviderTest : public ::testing::Test {
protected:
    AudioLevelProviderTest() {
        QObject::connect(&provider, &AudioLevelProvider::dotLevelsChanged, [this] { ++rowChanges; });
    }

    auto showsRow(const QList<double> &row) { return Pointwise(::testing::DoubleNear(1e-12), row); }

    testing::ManualMainQueue queue;
    FakeLevels source;
    AudioLevelProvider provider{queue, source};
    int rowChanges = 0;
};

TEST_F(AudioLevelProviderTest, MeasuresALevelAgainstTheLoudestLately) {
    provider.startMonitoring();
    source.onAudioLevel(0.05F);
    EXPECT_NEAR(provider.currentLevel(), 0.8, 1e-6) << "the reference starts at its lower bound";
    source.onAudioLevel(0.025F);
    EXPECT_NEAR(provider.currentLevel(), 0.4, 1e-6) << "and does not sink below it";
    source.onAudioLevel(1.0F);
    EXPECT_NEAR(provider.currentLevel(), 0.8, 1e-6);
    source.onAudioLevel(0.1F);
    EXPECT_NEAR(provider.currentLevel(), 0.1 / 0.995 * 0.8, 1e-6);
}

TEST_F(AudioLevelProviderTest, ShapesASteadyLevelAfterTenSteps) {
    provider.startMonitoring();
    source.onAudioLevel(0.5F);
    queue.advance(499ms);
    EXPECT_EQ(provider.dotLevels().first(), 0) << "nine steps do not reach the left end";
    queue.advance(1ms);
    EXPECT_THAT(provider.dotLevels(), showsRow(shapeTimes(0.8)));
    const int changes = rowChanges;
    queue.advance(500ms);
    EXPECT_EQ(rowChanges, changes) << "a row that stays the same is not announced again";
}

TEST_F(AudioLevelProviderTest, LetsASoundWanderFromRightToLeft) {
    provider.startMonitoring();
    source.onAudioLevel(0.5F);
    queue.advance(50ms);
    EXPECT_THAT(provider.dotLevels(), showsRow({0, 0, 0, 0, 0, 0, 0, 0, 0.19 * 0.8, 0.68 * 0.8}));
    source.onAudioLevel(0.0F);
    queue.advance(100ms);
    EXPECT_THAT(provider.dotLevels(),
                showsRow({0, 0, 0, 0, 0, 0, 0.92 * 0.25 * 0.8, 0.84 * 0.5 * 0.8, 0.76 * 0.25 * 0.8, 0}));
}

TEST_F(AudioLevelProviderTest, RestsWhenStopped) {
    provider.startMonitoring();
    source.onAudioLevel(1.0F);
    queue.advance(300ms);
    for (int stop = 0; stop < 2; ++stop) { // the second time while idle
        provider.stopMonitoring();
        EXPECT_THAT(provider.dotLevels(), Each(0.0));
        EXPECT_EQ(provider.currentLevel(), 0);
        EXPECT_FALSE(source.onAudioLevel);
        EXPECT_EQ(queue.pendingTimers(), 0U);
    }
    provider.startMonitoring();
    queue.advance(50ms);
    EXPECT_THAT(provider.dotLevels(), Each(0.0)) << "a new start shows nothing of the last recording";
}

} // namespace

} // namespace velmo
