#include "localservice/speech/health_endpoint.h"

namespace velmo::localservice {

Endpoint healthEndpoint(const EnginePool &engines) {
    return {"GET", "/health", [&engines](const Request &) {
                if (!engines.isReady())
                    return refusalReply({503, QStringLiteral("The speech engine is still loading.")});
                return Reply{200, {{QStringLiteral("status"), QStringLiteral("ok")}}};
            }};
}

} // namespace velmo::localservice
