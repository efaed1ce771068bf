#include "localservice/speech/pause_cutter.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace velmo::localservice {

namespace {

using ::testing::IsEmpty;

/// Takes every sound for voice, and the louder the surer.
class LoudIsVoice final : public VoiceDetector {
public:
    std::vector<float> hear(std::span<const float> samples) override {
        std::vector<float> voice;
        for (size_t first = 0; first < samples.size(); first += samplesPerFrame)
            voice.push_back(samples[first] == 0 ? 0.0F : 0.9F);
        return voice;
    }
};

/// Sound that tells where each sample comes from: every one is the number of its place, and 0 is silence.
class Recording {
public:
    Recording &speak(double seconds) { return add(seconds, true); }
    Recording &pause(double seconds) { return add(seconds, false); }

    /// All pieces, of sound that comes in portions of that size.
    [[nodiscard]] std::vector<std::vector<int16_t>> pieces(size_t portion) const {
        PauseCutter cutter(std::make_unique<LoudIsVoice>());
        std::vector<std::vector<int16_t>> pieces;
        const auto take = [&pieces](std::vector<SoundPiece> finished) {
            for (SoundPiece &piece : finished)
                pieces.push_back(std::move(piece.sound.samples));
        };
        for (size_t first = 0; first < m_samples.size(); first += portion)
            take(cutter.append(
                std::span(m_samples).subspan(first, std::min(portion, m_samples.size() - first))));
        take(cutter.finish());
        return pieces;
    }

    [[nodiscard]] std::vector<int16_t> voice() const { return voiceIn(m_samples); }

    static std::vector<int16_t> voiceIn(std::vector<int16_t> samples) {
        std::erase(samples, 0);
        return samples;
    }

    Recording &whisper(double seconds) {
        const size_t first = m_samples.size();
        speak(seconds);
        for (size_t index = first; index < m_samples.size(); ++index)
            m_samples[index] = 1;
        return *this;
    }

private:
    Recording &add(double seconds, bool isVoice) {
        for (int count = 0; count < seconds * Sound::samplesPerSecond; ++count)
            m_samples.push_back(isVoice ? static_cast<int16_t>(1000 + m_samples.size() % 30000) : int16_t(0));
        return *this;
    }

    std::vector<int16_t> m_samples;
};

double secondsOf(const std::vector<int16_t> &samples) {
    return static_cast<double>(samples.size()) / Sound::samplesPerSecond;
}

/// Every sample of the voice stands in the pieces once, in its order.
void expectNothingLostOrDoubled(const Recording &recording, const std::vector<std::vector<int16_t>> &pieces) {
    std::vector<int16_t> joined;
    for (const auto &piece : pieces)
        joined.insert(joined.end(), piece.begin(), piece.end());
    EXPECT_EQ(Recording::voiceIn(joined), recording.voice());
}

} // namespace

TEST(PauseCutter, CutsAtPausesWithoutLosingOrDoublingAnything) {
    Recording recording;
    recording.pause(5)
        .speak(3)
        .pause(0.6)
        .speak(2)
        .pause(0.3)
        .speak(2)
        .pause(0.5)
        .speak(5)
        .pause(0.5)
        .speak(1)
        .pause(2);
    for (const size_t portion : {size_t(160), size_t(512), size_t(7001), size_t(10'000'000)}) {
        const auto pieces = recording.pieces(portion);
        // Three seconds are too short for a piece, 0.3 s for a pause.
        ASSERT_EQ(pieces.size(), 3U) << portion;
        EXPECT_NEAR(secondsOf(pieces[0]), 0.3 + 3 + 0.6 + 2 + 0.3 + 2 + 0.3, 0.1);
        EXPECT_NEAR(secondsOf(pieces[1]), 0.2 + 5 + 0.3, 0.1);
        EXPECT_NEAR(secondsOf(pieces[2]), 0.2 + 1 + 0.3, 0.1);
        expectNothingLostOrDoubled(recording, pieces);
    }
}

TEST(PauseCutter, CutsSpeechWithoutPauseWhereTheVoiceIsWeakest) {
    Recording recording;
    recording.speak(13).whisper(0.3).speak(40);
    const auto pieces = recording.pieces(1000);
    ASSERT_GE(pieces.size(), 3U);
    EXPECT_NEAR(secondsOf(pieces[0]), 0.3 + 13.15, 0.1);
    for (const auto &piece : pieces)
        EXPECT_LE(secondsOf(piece), 20.1);
    expectNothingLostOrDoubled(recording, pieces);
}

TEST(PauseCutter, ShortensLongPausesAndDropsWhatIsNoSpeech) {
    EXPECT_THAT(Recording().pause(30).pieces(1000), IsEmpty());
    EXPECT_THAT(Recording().pieces(1000), IsEmpty());
    EXPECT_THAT(Recording().pause(1).speak(0.05).pause(3).pieces(1000), IsEmpty());

    Recording recording;
    recording.speak(1).pause(60).speak(1);
    const auto pieces = recording.pieces(1000);
    ASSERT_EQ(pieces.size(), 1U);
    EXPECT_NEAR(secondsOf(pieces[0]), 0.3 + 1 + 1 + 1, 0.1);
    expectNothingLostOrDoubled(recording, pieces);
}

} // namespace velmo::localservice
