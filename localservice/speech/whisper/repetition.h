#pragma once

#include <QString>

namespace velmo::localservice {

/// Whether a text goes round in circles, as a model's does that has lost its way: the same three words twice in a row, or the
/// same four again within twelve.
[[nodiscard]] bool repeatsItself(const QString &text);

} // namespace velmo::localservice
