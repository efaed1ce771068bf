#pragma once

#include <QObject>
#include <QString>

namespace velmo {

Q_NAMESPACE

/// Where a dictation is. The names are also those of the log lines and of `velmo status`.
enum class State { idle, recording, transcribing };
Q_ENUM_NS(State)

[[nodiscard]] QString nameOf(State state);

/// The gesture a recording runs by: none, the trigger key is held, or two taps (or the hot key) began it.
enum class RecordingMode { none, pushToTalk, handsFree };
Q_ENUM_NS(RecordingMode)

} // namespace velmo
