#pragma once

#include "localservice/speech/speech_engine.h"
#include "localservice/speech/whisper/loaded_model.h"

namespace velmo::localservice {

/// The embedded engine: Whisper models in this process, one in memory at a time, one recording worked on at a time. It hears
/// where there is voice before anything else, knows the languages of its model, and heeds hint words.
[[nodiscard]] EngineKind whisperEngines(const ModelSurroundings &surroundings);

} // namespace velmo::localservice
