#pragma once

#include "localservice/http/endpoint.h"
#include "localservice/speech/engine_pool.h"

namespace velmo::localservice {

/// GET /health: 200 and {"status": "ok"} once speech is recognised without delay, 503 while the engine is
/// still loading. The pool must outlive the endpoint.
[[nodiscard]] Endpoint healthEndpoint(const EnginePool &engines);

} // namespace velmo::localservice
