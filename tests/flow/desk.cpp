#include "flow/desk.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace velmo::testing {

// The cues go to another sink than the one the microphone hears, as with headphones.
Desk::Desk()
    : sound(PulseServer::virtualMicrophone() +
            QStringList{u"load-module module-null-sink sink_name=speaker"_s, u"set-default-sink speaker"_s}) {
    display.startWindowManager();
    sound.wakeMicrophone();
}

std::unique_ptr<DisplayProgram> Desk::startWindow(const QString &title, const QString &program,
                                                  const QStringList &arguments) {
    auto window = display.start(program, arguments);
    const QStringList give = {u"search"_s, u"--onlyvisible"_s, u"--name"_s, title, u"windowfocus"_s};
    const QStringList ask = {u"getwindowfocus"_s, u"getwindowname"_s};
    EXPECT_TRUE(waitUntil([&] {
        display.start(u"xdotool"_s, give)->outputUntilEnd();
        return display.start(u"xdotool"_s, ask)->outputUntilEnd().contains(title.toUtf8());
    })) << "the window has not got the focus";
    return window;
}

} // namespace velmo::testing
