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

} // namespace velmo::localservice
