#pragma once

#include "localservice/speech/speech_engine.h"

namespace velmo::localservice {

/// The engine that comes with the service: PocketSphinx with its English model. It understands clear, short
/// English; hint words are ignored. Each instance holds a model of about 100 MB in memory.
/// `modelDirectory` holds "en-us", "en-us.lm.bin" and "cmudict-en-us.dict".
[[nodiscard]] EngineKind pocketSphinxEngines(const QString &modelDirectory);

} // namespace velmo::localservice
