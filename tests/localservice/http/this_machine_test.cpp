#include "localservice/http/this_machine.h"

#include <gtest/gtest.h>

namespace velmo::localservice {

TEST(ThisMachine, KnowsItsNames) {
    for (const char *host : {"127.0.0.1", "127.0.0.1:18650", "127.9.9.9", "localhost:18650", "LOCALHOST",
                             "[::1]:18650", "[::1]", "192.168.1.7:18650"})
        EXPECT_TRUE(namesThisMachine(host, "192.168.1.7")) << host;
}

TEST(ThisMachine, KnowsForeignNames) {
    for (const char *host : {"", ":18650", "evil.example", "evil.example:18650", "127.0.0.1.evil.example",
                             "localhost.evil.example", "localhost@evil.example", "10.0.0.1", "[::2]",
                             "127.0.0.1:18650:80", "127.0.0.1:x", "2130706433", "0x7f000001"})
        EXPECT_FALSE(namesThisMachine(host, "192.168.1.7")) << host;
}

TEST(ThisMachine, JudgesOrigins) {
    EXPECT_TRUE(isOriginOfThisMachine("http://localhost:3000", "127.0.0.1"));
    EXPECT_TRUE(isOriginOfThisMachine("https://[::1]", "127.0.0.1"));
    for (const char *origin : {"null", "", "http://evil.example", "file://", "chrome-extension://localhost",
                               "http://localhost/evil"})
        EXPECT_FALSE(isOriginOfThisMachine(origin, "127.0.0.1")) << origin;
}

TEST(ThisMachine, KnowsPeersOnLoopback) {
    for (const char *address : {"127.0.0.1", "127.3.2.1", "::1", "::ffff:127.0.0.1"})
        EXPECT_TRUE(isLoopbackAddress(address)) << address;
    for (const char *address : {"", "192.168.1.7", "::ffff:192.168.1.7", "::2", "fe80::1"})
        EXPECT_FALSE(isLoopbackAddress(address)) << address;
}

} // namespace velmo::localservice
