#pragma once

#include "localservice/http/endpoint.h"
#include "localservice/speech/speech_recognition.h"

namespace velmo::localservice {

class LiveRecordings;

/// GET /health: 200 once speech is recognised without delay, 503 while the engine is still loading. {"status": "ok",
/// "liveUpload": whether recordings are taken while they are being made, "since": when the service began (ISO 8601), "engine",
/// "model" and "languages" (codes) as far as they are known, "languageModel": what rewrites texts, unless there is none}. The
/// recognition must outlive the endpoint.
[[nodiscard]] Endpoint healthEndpoint(const SpeechRecognition &speech,
                                      std::function<QString()> languageModel = {});

/// HEAD (and GET) /: somebody has begun to speak; the engine gets ready while they do. The recognition must outlive the
/// endpoint.
[[nodiscard]] Endpoint rootEndpoint(SpeechRecognition &speech);

/// GET /api/transcribe/words?upload=BOUNDARY&known=COUNT: {"text"}, what has been heard so far of the recording whose upload has
/// that boundary; waits up to two seconds for something else than a text of that many UTF-16 units. 404 when no such recording
/// is being made. The recordings must outlive the endpoint.
[[nodiscard]] Endpoint wordsEndpoint(LiveRecordings &recordings);

/// POST /api/transcribe: a recording, in the exact form Velmo uploads it, becomes {"text",
/// "detectedLanguage"}. One that is still being made comes in chunks, behind the parts that go with it. A request of another form is answered with 400 and the piece at fault. The pool must
/// outlive the endpoint, and so must the recordings.
[[nodiscard]] Endpoint transcribeEndpoint(SpeechRecognition &speech, LiveRecordings &recordings);

} // namespace velmo::localservice
