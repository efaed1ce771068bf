#pragma once

#include "localservice/http/endpoint.h"
#include "localservice/speech/speech_engine.h"

namespace velmo::localservice {

/// The header at fault among those Velmo sends with every upload, in a sentence.
[[nodiscard]] std::optional<QString> faultInHeaders(const Request &request);

/// {"text", "detectedLanguage"}, or the refusal.
[[nodiscard]] Reply transcriptReply(const SpeechOutcome &outcome);

} // namespace velmo::localservice
