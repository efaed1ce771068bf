#pragma once

#include "platform/linux/x11/key_stage.h"
#include "support/private_bus.h"
#include "support/pulse_server.h"
#include "support/xvfb.h"

namespace velmo::testing {

/// What a person dictates with: a display with a window manager, a keyboard, a microphone that hears what is played to
/// it, a loudspeaker and a session bus, all private.
struct Desk {
    Desk();

    /// A program whose window has that title and gets the focus.
    [[nodiscard]] std::unique_ptr<DisplayProgram> startWindow(const QString &title, const QString &program,
                                                              const QStringList &arguments);

    PulseServer sound;
    PrivateBus bus;
    Xvfb display;
    Hands hands{display.display()};
};

} // namespace velmo::testing
