#include "platform/linux/dbus/screen_saver_lock.h"

#include "support/screen_saver.h"
#include "support/wait_until.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

using testing::waitUntil;

TEST(ScreenSaverLockTest, FollowsTheScreenSaversOfTheDesktops) {
    const testing::PrivateBus bus;
    ScreenSaverLock lock;
    int locked = 0;
    lock.onLocked = [&locked] { ++locked; };
    EXPECT_FALSE(lock.isLocked());
    const QStringList interfaces = {u"org.freedesktop.ScreenSaver"_s, u"org.gnome.ScreenSaver"_s};
    {
        testing::ScreenSaver saver(bus);
        for (const QString &interface : interfaces)
            saver.setActive(true, interface); // one that speaks two languages
        EXPECT_TRUE(waitUntil([&] { return lock.isLocked(); }));
        for (const QString &interface : interfaces)
            saver.setActive(false, interface);
        EXPECT_TRUE(waitUntil([&] { return !lock.isLocked(); }));
        EXPECT_EQ(locked, 1);

        saver.setActive(true);
        EXPECT_TRUE(waitUntil([&] { return lock.isLocked(); }));
    }
    EXPECT_TRUE(waitUntil([&] { return !lock.isLocked(); })) << "the screen saver has crashed";
    EXPECT_EQ(locked, 2);
}

} // namespace

} // namespace velmo
