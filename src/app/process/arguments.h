#pragma once

#include <QStringList>

namespace velmo {

/// The words after the program's name. What an address of Velmo's own scheme carries, such as an identity token, is for
/// us alone: it is wiped out where process lists read it.
[[nodiscard]] QStringList takeArguments(int argc, char **argv);

} // namespace velmo
