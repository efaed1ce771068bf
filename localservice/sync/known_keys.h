#pragma once

#include "localservice/account/accounts.h"

#include <QStringList>

namespace velmo::localservice {

/// Puts the keys of one push into the temporary table "pushed", in place of the last one's.
void takePushed(SqlRun &sql, const QStringList &keys);

/// A device has pulled a list: it knows the keys that the statement selects for the account (?1), and no others.
void knowPulled(SqlRun &sql, const Session &session, const QString &list, const QString &selectKeys);

/// A device has pushed a list: it knows the keys in "pushed", and no others.
void knowPushed(SqlRun &sql, const Session &session, const QString &list);

} // namespace velmo::localservice
