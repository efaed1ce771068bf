#include "platform/linux/inotify/inotify_folder_watch.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>
#include <QEventLoop>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

/// Lets the event loop handle what the kernel has announced already.
void handleEvents() {
    while (QCoreApplication::eventDispatcher()->processEvents(QEventLoop::AllEvents)) {
    }
}

void write(const QString &path) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Append));
    file.write("x");
}

} // namespace

TEST(InotifyFolderWatch, HearsOfFilesOfItsPrefixHoweverOftenTheyAreReplaced) {
    const QTemporaryDir folder;
    const QString log = folder.filePath(u"preferences.sqlite-wal"_s);
    int changes = 0;
    InotifyFolderWatch watch;
    ASSERT_TRUE(watch.watch(folder.path(), u"preferences.sqlite"_s, [&] { ++changes; }));

    write(folder.filePath(u"other"_s));
    handleEvents();
    EXPECT_EQ(changes, 0);
    for (int round = 1; round <= 2; ++round) {
        write(log);
        write(log);
        handleEvents();
        EXPECT_EQ(changes, 2 * round - 1);
        QFile::remove(log);
        handleEvents();
        EXPECT_EQ(changes, 2 * round);
    }
    EXPECT_FALSE(watch.watch(folder.filePath(u"none"_s), QString(), [] {}));
}

} // namespace velmo
