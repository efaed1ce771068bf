#pragma once

#include "localservice/endpoint.h"
#include "localservice/engine_pool.h"

namespace velmo::localservice {

/// GET /health: 200 and {"status": "ok"} once speech is recognised without delay, 503 while the engine is
/// still loading. The pool must outlive the endpoint.
[[nodiscard]] Endpoint healthEndpoint(const EnginePool &engines);

} // namespace velmo::localservice
