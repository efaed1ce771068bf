#include "platform/linux/x11/server/loop.h"

#include "support/xvfb.h"

#include <atomic>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;

namespace velmo::x11 {

namespace {

TEST(X11Loop, RunsTasksTimersAndEventsInItsThread) {
    const testing::Xvfb server;
    const auto connection = Connection::open(server.display());
    ASSERT_TRUE(connection);
    Loop loop(**connection);
    std::atomic<bool> noticed = false;
    std::atomic<bool> cancelledRan = false;
    Loop::Timer timer;
    Loop::Timer cancelled;
    loop.addHandler([&](const xcb_generic_event_t &event) {
        if (kindOf(event) == XCB_PROPERTY_NOTIFY)
            noticed = true;
    });
    loop.start();
    loop.post([&] {
        cancelled = loop.after(1ms, [&] { cancelledRan = true; });
        timer = loop.after(2ms, [&] {
            Connection &x = **connection;
            const auto window = x.createWindow(XCB_EVENT_MASK_PROPERTY_CHANGE);
            xcb_delete_property(x.xcb(), window, x.atom("NOTHING"));
            xcb_change_property(x.xcb(), XCB_PROP_MODE_REPLACE, window, x.atom("SOME"), XCB_ATOM_STRING, 8, 0,
                                "");
        });
        cancelled.reset();
    });
    EXPECT_TRUE(testing::waitUntil([&] { return noticed.load(); }));
    loop.stop();
    EXPECT_FALSE(cancelledRan);
}

TEST(X11Connection, NamesAtomsAndSaysWhenThereIsNoDisplay) {
    const testing::Xvfb server;
    const auto connection = Connection::open(server.display());
    ASSERT_TRUE(connection);
    const auto atom = (*connection)->atom("text/plain;charset=utf-8");
    const auto other = Connection::open(server.display());
    EXPECT_EQ((*other)->nameOf(atom), "text/plain;charset=utf-8");
    EXPECT_EQ((*other)->atom("text/plain;charset=utf-8"), atom);
    EXPECT_EQ(Connection::open(u":98765"_s).error(), u"The display could not be opened."_s);
}

} // namespace

} // namespace velmo::x11
