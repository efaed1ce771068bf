#pragma once

#include "platform/microphone_presence.h"

#include <memory>

namespace velmo {

class MainQueue;

namespace pulse {
class Connection;
}

/// Asks the sound server for its default source. The queue outlives what is made.
[[nodiscard]] std::unique_ptr<MicrophonePresence>
makePulseMicrophonePresence(std::shared_ptr<pulse::Connection> connection, MainQueue &queue);

} // namespace velmo
