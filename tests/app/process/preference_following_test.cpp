#include "app/process/preference_following.h"

#include "platform/folder_watch.h"
#include "store/history_store.h"
#include "store/memory_preferences.h"
#include "store/preference_watch.h"
#include "support/log_capture.h"
#include "support/manual_main_queue.h"
#include "support/qt_printing.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

struct FakeFolderWatch final : FolderWatch {
    bool canWatch = true;
    QString watched;
    std::function<void()> changed;

    bool watch(const QString &folder, const QString &namePrefix, std::function<void()> callback) override {
        watched = folder + u' ' + namePrefix;
        changed = std::move(callback);
        return canWatch;
    }
};

} // namespace

TEST(PreferenceFollowing, ShowsWhatAnotherProcessDictated) {
    const testing::LogCapture log;
    testing::ManualMainQueue queue;
    MemoryPreferences preferences;
    PreferenceWatch watch(preferences, queue);
    FakeFolderWatch folder;
    HistoryStore history(preferences, queue);
    const SharedPreferences shared{preferences, u"/home/kari/velmo/preferences.sqlite"_s, watch, folder,
                                   history};
    followOtherProcesses(shared);
    EXPECT_EQ(folder.watched, u"/home/kari/velmo preferences.sqlite"_s);
    HistoryStore(preferences, queue).add(u"hei"_s, 2);
    folder.changed();
    queue.runPosted();
    EXPECT_EQ(history.entries().size(), 1);
    EXPECT_EQ(log.lines(), QStringList());

    folder.canWatch = false;
    followOtherProcesses(shared);
    EXPECT_EQ(log.lines().value(0).section(u' ', 2), u"Changes of other processes cannot be noticed"_s);
}

} // namespace velmo
