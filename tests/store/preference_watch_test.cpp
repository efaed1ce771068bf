#include "store/preference_watch.h"

#include "store/memory_preferences.h"
#include "support/manual_main_queue.h"
#include "support/qt_printing.h"

#include <gtest/gtest.h>
#include <memory>

using namespace Qt::StringLiterals;

namespace velmo {

TEST(PreferenceWatchTest, TellsAFollowerOfItsOwnKeyWhileItLives) {
    testing::ManualMainQueue queue;
    MemoryPreferences preferences;
    PreferenceWatch watch(preferences, queue);
    QString calls;
    const QObject first;
    auto second = std::make_unique<QObject>();
    watch.follow(u"a"_s, &first, [&] { calls += u'1'; });
    watch.follow(u"b"_s, &first, [&] { calls += u'2'; });
    watch.follow(u"b"_s, second.get(), [&] { calls += u'3'; });
    const auto writeB = [&](std::initializer_list<QString> values) {
        for (const QString &value : values) {
            preferences.set(u"b"_s, value);
            watch.noteWrite();
        }
        queue.runPosted();
        return std::exchange(calls, QString());
    };

    EXPECT_EQ(writeB({u"x"_s, u"y"_s}), u"23"_s) << "once for all that was written";
    EXPECT_EQ(writeB({u"z"_s, u"y"_s}), QString()) << "as it was";
    second.reset();
    EXPECT_EQ(writeB({u"z"_s}), u"2"_s);
}

} // namespace velmo
