#pragma once

#include "localservice/http/openai_server.h"
#include "localservice/speech/speech_engine.h"

namespace velmo::localservice {

struct SpeechServerSettings {
    OpenAiAddress address;
    /// Leaves the language to the server's ears instead of telling it the primary one: for people who dictate
    /// in several. Told one language, Whisper writes everything in it.
    bool detectLanguage = false;
};

/// Engines that ask a server with the OpenAI-compatible POST /v1/audio/transcriptions, such as those of
/// whisper.cpp and faster-whisper. The recording goes there as it was uploaded. The client must outlive them.
[[nodiscard]] EngineKind openAiSpeechEngines(HttpClient &http, const SpeechServerSettings &settings);

} // namespace velmo::localservice
