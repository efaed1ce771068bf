#include "base/qt_main_queue.h"
#include "dictation/gestures/fn_key_interceptor.h"
#include "platform/linux/x11/x11_input.h"

#include <QCoreApplication>
#include <cstdio>

using namespace Qt::StringLiterals;

// A program with Velmo's hold on the keyboard and nothing else, for tests to stop and to kill. It says "down"
// and "up" with the trigger key. The argument is the key guard's program.
int main(int argc, char **argv) {
    QCoreApplication application(argc, argv);
    velmo::QtMainQueue queue;
    const auto input = velmo::makeX11Input(queue, {QString(), QCoreApplication::arguments().value(1)});
    velmo::FnKeyInterceptor interceptor(*input.tap, queue, u"RCTL"_s);
    const auto say = [](const char *word) {
        std::puts(word);
        (void)std::fflush(stdout);
    };
    interceptor.onFnDown = [say](std::chrono::nanoseconds) { say("down"); };
    interceptor.onFnUp = [say](std::chrono::nanoseconds) { say("up"); };
    return interceptor.start() ? QCoreApplication::exec() : EXIT_FAILURE;
}
