#pragma once

#include <QByteArray>

namespace velmo {

/// Writes all of it, however many calls that takes. False when the reader has gone or the descriptor fails.
bool writeAll(int descriptor, const QByteArray &bytes);

} // namespace velmo
