#pragma once

#include "base/interface.h"

#include <functional>

namespace velmo {

/// Whether this application may listen to the microphone. Desktops without such a permission always answer
/// Granted; a missing device is then the recorder's error.
class MicrophonePermission : public Interface {
public:
    enum class Status { NotAsked, Restricted, Denied, Granted };
    using Answer = std::function<void(bool granted)>;

    /// Main thread; returns at once.
    [[nodiscard]] virtual Status status() const = 0;

    /// Asks the person. The answer comes once, on any thread, perhaps much later.
    virtual void request(Answer answer) = 0;
};

} // namespace velmo
