#include "platform/linux/pulse/microphone_presence.h"

#include "base/qt_main_queue.h"
#include "platform/linux/pulse/connection.h"
#include "support/pulse_server.h"
#include "support/wait_until.h"

#include <csignal>
#include <gtest/gtest.h>
#include <optional>

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

using testing::PulseServer;

class PulseMicrophonePresenceTest : public ::testing::Test {
protected:
    [[nodiscard]] bool isPresent() {
        std::optional<bool> answer;
        presence->check([&](bool present) { answer = present; });
        EXPECT_FALSE(answer) << "the answer is a task of the main queue";
        EXPECT_TRUE(testing::waitUntil([&] { return answer.has_value(); }));
        return answer.value_or(false);
    }

    QtMainQueue queue;
    std::unique_ptr<MicrophonePresence> presence =
        makePulseMicrophonePresence(std::make_shared<pulse::Connection>(), queue);
};

TEST_F(PulseMicrophonePresenceTest, FollowsServerAndSource) {
    qputenv("PULSE_SERVER", "unix:/nowhere");
    EXPECT_FALSE(isPresent()) << "no server";
    PulseServer server({});
    EXPECT_FALSE(isPresent()) << "no source";
    server.control({u"load-module"_s, u"module-sine-source"_s});
    EXPECT_TRUE(isPresent());
    server.control({u"unload-module"_s, u"module-sine-source"_s});
    EXPECT_FALSE(isPresent());
    server.control({u"load-module"_s, u"module-always-sink"_s});
    EXPECT_FALSE(isPresent()) << "the dummy output's sound is no microphone";
    server.signal(SIGSTOP);
    EXPECT_FALSE(isPresent()) << "a server that hangs";
}

} // namespace

} // namespace velmo
