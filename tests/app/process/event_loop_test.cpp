#include "app/process/event_loop.h"

#include <QTimer>
#include <gtest/gtest.h>

namespace velmo {

TEST(EventLoop, RunsUntilTheAnswerComesWhichMayBeAtOnce) {
    EXPECT_EQ(awaitAnswer<int>([](const auto &answer) { answer(1); }), 1);
    EXPECT_EQ(awaitAnswer<int>([](const auto &answer) { QTimer::singleShot(0, [answer] { answer(2); }); }),
              2);
}

} // namespace velmo
