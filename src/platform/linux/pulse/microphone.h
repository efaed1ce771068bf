#pragma once

#include "platform/microphone.h"

#include <memory>

namespace velmo {

class MainQueue;

namespace pulse {
class Connection;
}

/// The default source of the sound server. A stream follows the default: the server itself moves it when the device
/// vanishes or another becomes the default. Where the server takes the stream away, or ends and is started again by
/// the system, the capture opens once more before it gives up. The queue is the clock of the capture times.
[[nodiscard]] std::unique_ptr<Microphone> makePulseMicrophone(std::shared_ptr<pulse::Connection> connection,
                                                              const MainQueue &queue);

} // namespace velmo
