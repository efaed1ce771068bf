#pragma once

#include "localservice/account/account_database.h"

namespace velmo::localservice {

/// GET /api/sync/dictionary: {"words", "deletedWords"}, each in ascending order; the latter are the tombstones: words
/// that were removed on some device and that others may still have. The database must outlive the endpoint.
[[nodiscard]] Endpoint dictionaryPullEndpoint(AccountDatabase &database);

/// PUT /api/sync/dictionary: {"words"}, all a device has. A device is judged by what it knows: what it got in its last
/// pull or sent in its last push, whichever was later. Words it knew and has no more become tombstones; words it did
/// not know and has now are added, and clear their tombstones. What it knew and still has says nothing new: if another
/// device has removed such a word since, it stays removed. Words other devices have added since stay too.
[[nodiscard]] Endpoint dictionaryPushEndpoint(AccountDatabase &database);

/// GET /api/sync/snippets: {"snippets"}, an array of {"id", "trigger", "expansion"} in ascending order of triggers. The
/// database must outlive the endpoint.
[[nodiscard]] Endpoint snippetPullEndpoint(AccountDatabase &database);

/// PUT /api/sync/snippets: {"snippets"}, all a device has. Triggers that differ in upper and lower case alone are one;
/// the pushed snippet replaces the stored one. Snippets that the device knew (from its last pull or push, whichever was
/// later) and has no more are removed without a trace, so a device that still has one brings it back; those that other
/// devices have added since stay.
[[nodiscard]] Endpoint snippetPushEndpoint(AccountDatabase &database);

// Statistics: each answers {"totalWords", "totalSessions"} as they are then. The database must outlive the endpoints.

/// GET /api/sync/stats.
[[nodiscard]] Endpoint statisticsPullEndpoint(AccountDatabase &database);

/// PUT /api/sync/stats: {"totalWords", "totalSessions"}; of each the larger one is kept.
[[nodiscard]] Endpoint statisticsPushEndpoint(AccountDatabase &database);

/// POST /api/sync/stats/increment: {"words"} adds the words of one dictation, and the dictation.
[[nodiscard]] Endpoint statisticsIncrementEndpoint(AccountDatabase &database);

} // namespace velmo::localservice
