#pragma once

#include "localservice/account/account_database.h"

namespace velmo::localservice {

// Each answers {"totalWords", "totalSessions"} as they are then. The database must outlive the endpoints.

/// GET /api/sync/stats.
[[nodiscard]] Endpoint statisticsPullEndpoint(AccountDatabase &database);

/// PUT /api/sync/stats: {"totalWords", "totalSessions"}; of each the larger one is kept.
[[nodiscard]] Endpoint statisticsPushEndpoint(AccountDatabase &database);

/// POST /api/sync/stats/increment: {"words"} adds the words of one dictation, and the dictation.
[[nodiscard]] Endpoint statisticsIncrementEndpoint(AccountDatabase &database);

} // namespace velmo::localservice
