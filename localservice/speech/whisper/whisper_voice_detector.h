#pragma once

#include "localservice/speech/voice_detector.h"

#include <memory>

struct whisper_vad_context;

namespace velmo::localservice {

/// The voice detector that comes with the library; its model is part of the program.
class WhisperVoiceDetector final : public VoiceDetector {
public:
    WhisperVoiceDetector();
    ~WhisperVoiceDetector() override;

    /// Without its model, which only an out-of-memory could keep away, everything is voice.
    [[nodiscard]] std::vector<float> hear(std::span<const float> samples) override;

private:
    struct Free {
        void operator()(whisper_vad_context *context) const;
    };

    std::unique_ptr<whisper_vad_context, Free> m_context;
};

} // namespace velmo::localservice
