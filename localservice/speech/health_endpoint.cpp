#include "localservice/speech/endpoints.h"

using namespace Qt::StringLiterals;

namespace velmo::localservice {

Endpoint healthEndpoint(const EnginePool &engines) {
    return {"GET", "/health", [&engines](const Request &) {
                if (!engines.isReady())
                    return refusalReply({503, u"The speech engine is still loading."_s});
                return Reply{200, {{u"status"_s, u"ok"_s}}};
            }};
}

} // namespace velmo::localservice
