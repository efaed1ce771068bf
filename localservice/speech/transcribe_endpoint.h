#pragma once

#include "localservice/http/endpoint.h"
#include "localservice/speech/engine_pool.h"

namespace velmo::localservice {

/// POST /api/transcribe: a recording, in the exact form Velmo uploads it, becomes {"text",
/// "detectedLanguage"}. A request of another form is answered with 400 and the piece at fault. The pool must
/// outlive the endpoint.
[[nodiscard]] Endpoint transcribeEndpoint(EnginePool &engines);

} // namespace velmo::localservice
