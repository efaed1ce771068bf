#pragma once

#include "localservice/speech/sound_cutter.h"
#include "localservice/speech/voice_detector.h"

#include <memory>
#include <optional>

namespace velmo::localservice {

/// In seconds.
struct CutLimits {
    double shortest = 4;   ///< A piece goes on for as long, whatever the pauses in it.
    double longest = 20;   ///< Without a pause by then it is cut where the voice is weakest.
    double pause = 0.4;    ///< Ends a piece.
    double margin = 0.3;   ///< Kept before and after the voice: words begin and end softly.
    double longestGap = 1; ///< Longer pauses inside a piece are shortened to this.
    /// With less a piece is dropped: clicks have none, chords that begin at once up to 0.24, single words 0.3 and more.
    double leastVoice = 0.25;
};

/// Cuts speech at its pauses, so that no word is cut in two: what is left out is what nobody said anything in.
class PauseCutter final : public SoundCutter {
public:
    explicit PauseCutter(std::unique_ptr<VoiceDetector> detector, const CutLimits &limits = {});

    [[nodiscard]] std::vector<SoundPiece> append(std::span<const int16_t> samples) override;
    [[nodiscard]] std::vector<SoundPiece> finish() override;

private:
    struct Frame {
        float voice = 0;    ///< How likely it is one; 0: not likely enough.
        float strength = 0; ///< How likely and how loud.
    };

    void hear(std::span<const int16_t> samples, std::vector<SoundPiece> &pieces);
    void take(std::span<const int16_t> samples, float voice);
    void shorten();
    [[nodiscard]] std::optional<size_t> placeToCut() const;
    [[nodiscard]] size_t weakestFrame() const;
    void cut(size_t frames, std::vector<SoundPiece> &pieces);
    void drop(size_t first, size_t count);
    void look();

    std::unique_ptr<VoiceDetector> m_detector;
    CutLimits m_limits;
    std::vector<int16_t> m_partial; ///< Less than a frame.
    std::vector<int16_t> m_samples; ///< Of the frames.
    std::vector<Frame> m_frames;    ///< Since the last cut; until a voice is heard, the margin before it.
    bool m_wasVoice = false;
    size_t m_voiceEnd = 0; ///< The frame after the last one with voice; 0: none yet.
};

} // namespace velmo::localservice
