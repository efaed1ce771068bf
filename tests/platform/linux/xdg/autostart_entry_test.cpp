#include "platform/linux/xdg/autostart_entry.h"

#include "support/files.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace velmo {

class AutostartEntryTest : public ::testing::Test {
protected:
    const QTemporaryDir home;
    const QString folder = home.filePath(u"config/autostart"_s);
    const QString path = folder + u"/velmo.desktop"_s;
};

TEST_F(AutostartEntryTest, IsWhatDesktopsStartAtLogin) {
    AutostartEntry entry(folder, u"/opt/a b/velmo"_s);
    EXPECT_FALSE(entry.isEnabled());
    ASSERT_TRUE(entry.setEnabled(true));
    EXPECT_TRUE(entry.isEnabled());
    EXPECT_EQ(QProcess::execute(u"desktop-file-validate"_s, {path}), 0);
    EXPECT_TRUE(testing::contentOf(path).contains("\nExec=\"/opt/a b/velmo\" %u\n"));

    // A program of the desktop switches it off in its own way; switching on again brings it back.
    for (const char *line : {"Hidden=true\n", "X-GNOME-Autostart-enabled = false\n"}) {
        testing::writeFile(path,
                           QByteArray("[Desktop Entry]\nType=Application\nName=Velmo\nExec=velmo\n") + line);
        EXPECT_FALSE(entry.isEnabled()) << line;
        ASSERT_TRUE(entry.setEnabled(true));
        EXPECT_TRUE(entry.isEnabled()) << line;
    }
    ASSERT_TRUE(entry.setEnabled(false));
    EXPECT_FALSE(QFile::exists(path));
    EXPECT_TRUE(entry.setEnabled(false)) << "off already";
}

TEST_F(AutostartEntryTest, SaysWhyItCannotBeWritten) {
    testing::writeFile(home.filePath(u"config"_s)); // a file where a folder belongs
    AutostartEntry entry(folder, u"/opt/velmo"_s);
    const auto outcome = entry.setEnabled(true);
    ASSERT_FALSE(outcome);
    EXPECT_TRUE(outcome.error().startsWith(u"Could not change "_s + path)) << outcome.error().toStdString();
}

} // namespace velmo
