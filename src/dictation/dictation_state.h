#pragma once

#include <QObject>
#include <QString>

namespace velmo {

Q_NAMESPACE

/// Where a dictation is. The names are also those of the log lines and of `velmo status`.
enum class State { idle, recording, transcribing };
Q_ENUM_NS(State)

[[nodiscard]] QString nameOf(State state);

} // namespace velmo
