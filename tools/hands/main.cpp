#include "platform/linux/x11/key_stage.h"

#include <QCoreApplication>
#include <QStringList>
#include <chrono>
#include <cstdio>
#include <functional>
#include <map>
#include <thread>

using namespace Qt::StringLiterals;

// A person's hands for scripts, on a private Xvfb: what xdotool does comes from a program, and the trigger key does
// not listen to programs.
//
//     x11_hands down 105 pause 1200 up 105      holds Right Control for 1.2 s
int main(int argc, char **argv) {
    QCoreApplication application(argc, argv);
    velmo::testing::Hands hands{QString()};
    const std::map<QString, std::function<void(int)>> actions = {
        {u"down"_s, [&](int code) { hands.press(static_cast<uint8_t>(code)); }},
        {u"up"_s, [&](int code) { hands.release(static_cast<uint8_t>(code)); }},
        {u"tap"_s, [&](int code) { hands.tap(static_cast<uint8_t>(code)); }},
        {u"pause"_s, [](int ms) { std::this_thread::sleep_for(std::chrono::milliseconds(ms)); }},
    };
    const QStringList words = QCoreApplication::arguments().mid(1);
    for (qsizetype i = 0; i < words.size(); i += 2) {
        const auto action = actions.find(words[i]);
        if (action == actions.end() || i + 1 == words.size()) {
            std::fputs("usage: x11_hands (down|up|tap KEYCODE | pause MILLISECONDS)...\n", stderr);
            return 2;
        }
        action->second(words[i + 1].toInt());
    }
    return 0;
}
