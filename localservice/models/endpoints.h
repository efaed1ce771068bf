#pragma once

#include "localservice/http/endpoint.h"
#include "localservice/models/model_store.h"

#include <vector>

namespace velmo::localservice {

class ModelDownloads;

/// GET /api/models: {"models": [{"name", "bytes", "languages", "installed", "inUse", "source": who publishes it, "page": where, for
/// a model that is fetched by hand}], "download": {"name",
/// "received", "bytes", "bytesPerSecond"} or null, "failure": why the last one ended, if there is something to say}. POST {"get":
/// NAME}, {"cancel": NAME} or {"use": NAME} begins, ends or chooses, and answers the same. Both outlive the endpoints.
[[nodiscard]] std::vector<Endpoint> modelEndpoints(const ModelStore &store, ModelDownloads &downloads);

} // namespace velmo::localservice
