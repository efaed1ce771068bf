#pragma once

#include "localservice/models/model_store.h"

#include <QStringList>

namespace velmo::localservice {

/// `velmo-local-service models …`: the words after "models". Results go to standard output, all else to standard error.
/// Answers the exit status: 0 done, 1 not done, 2 wrong usage.
[[nodiscard]] int runModelsCommand(const QStringList &arguments, const ModelStore &store);

} // namespace velmo::localservice
