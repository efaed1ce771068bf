#pragma once

#include "store/sqlite_connection.h"

namespace velmo::localservice {

/// Gets a connection ready: its settings, and the tables where the file is still empty. A file of another program or
/// of a newer version is SQLITE_NOTADB, one that is damaged anywhere SQLITE_CORRUPT; neither is touched.
[[nodiscard]] SqliteCode prepareAccounts(const SqliteConnection &connection);

} // namespace velmo::localservice
