#pragma once

#include "base/result.h"
#include "localservice/models/model_layout.h"

#include <QIODevice>
#include <QString>

namespace velmo::localservice {

/// Looks whether a file is a whole speech model, so that the engine never meets anything else: its head, the sizes it names,
/// its vocabulary and its table of tensors, up to the last byte. The numbers themselves are not looked at. The device can be
/// sought in. A sentence says what is wrong.
[[nodiscard]] Result<ModelSizes, QString> checkModel(QIODevice &file);

/// The same for a file.
[[nodiscard]] Result<ModelSizes, QString> checkModelFile(const QString &path);

} // namespace velmo::localservice
