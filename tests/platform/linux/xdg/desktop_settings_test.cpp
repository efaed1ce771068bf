#include "platform/linux/xdg/desktop_settings.h"

#include "support/files.h"
#include "support/wait_until.h"

#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace velmo {

TEST(DesktopSettings, OpensWhatTheRunningDesktopHas) {
    using Page = SystemSettings::Page;
    const QTemporaryDir programs;
    const QString noted = programs.filePath(u"noted"_s);
    for (const char *name : {"gnome-control-center", "systemsettings", "pavucontrol"})
        testing::writeScript(programs.filePath(QLatin1StringView(name)),
                             "echo \"${0##*/} $*\" >\"" + noted.toUtf8() + "\"\n");
    const QByteArray path = qgetenv("PATH");
    qputenv("PATH", programs.path().toUtf8() + ":/usr/bin:/bin");
    const struct {
        const char *desktop;
        Page page;
        QByteArray expected; ///< Empty: there is no such page.
    } rows[] = {{"GNOME", Page::Keyboard, "gnome-control-center keyboard"},
                {"Budgie:GNOME", Page::Sound, "gnome-control-center sound"},
                {"KDE", Page::Keyboard, "systemsettings kcm_keys"},
                {"XFCE", Page::Sound, "pavucontrol"},
                {"sway", Page::Keyboard, {}},
                {"", Page::Keyboard, {}}};
    for (const auto &row : rows) {
        QFile::remove(noted);
        qputenv("XDG_CURRENT_DESKTOP", row.desktop);
        DesktopSettings settings;
        ASSERT_EQ(settings.canOpen(row.page), !row.expected.isEmpty()) << row.desktop;
        settings.open(row.page);
        EXPECT_TRUE(testing::waitUntil([&] { return testing::contentOf(noted).trimmed() == row.expected; }))
            << row.desktop;
    }
    qputenv("PATH", path);
}

} // namespace velmo
