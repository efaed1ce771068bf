#pragma once

#include <QtGlobal>

namespace velmo {

/// A program as the display tells programs apart: all its windows have the same. A new program may get the
/// number of one that has ended.
enum class DisplayClient : quint32 {};

} // namespace velmo
