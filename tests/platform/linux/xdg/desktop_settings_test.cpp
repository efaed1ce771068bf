#include "platform/linux/xdg/desktop_settings.h"

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
    for (const char *name : {"gnome-control-center", "systemsettings", "pavucontrol"}) {
        QFile script(programs.filePath(QLatin1StringView(name)));
        ASSERT_TRUE(script.open(QIODevice::WriteOnly));
        script.write("#!/bin/sh\necho \"${0##*/} $*\" >\"" + noted.toUtf8() + "\"\n");
        script.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }
    const QByteArray path = qgetenv("PATH");
    qputenv("PATH", programs.path().toUtf8() + ":/usr/bin:/bin");
    const auto contentOf = [](const QString &name) {
        QFile file(name);
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()).trimmed() : QString();
    };
    const struct {
        const char *desktop;
        Page page;
        QString expected; ///< Empty: there is no such page.
    } rows[] = {
        {"GNOME", Page::Keyboard, u"gnome-control-center keyboard"_s},
        {"Budgie:GNOME", Page::Sound, u"gnome-control-center sound"_s},
        {"KDE", Page::Keyboard, u"systemsettings kcm_keys"_s},
        {"XFCE", Page::Sound, u"pavucontrol"_s},
        {"sway", Page::Keyboard, {}},
        {"", Page::Keyboard, {}},
    };
    for (const auto &row : rows) {
        QFile::remove(noted);
        qputenv("XDG_CURRENT_DESKTOP", row.desktop);
        DesktopSettings settings;
        ASSERT_EQ(settings.canOpen(row.page), !row.expected.isEmpty()) << row.desktop;
        settings.open(row.page);
        EXPECT_TRUE(testing::waitUntil([&] { return contentOf(noted) == row.expected; })) << row.desktop;
    }
    qputenv("PATH", path);
}

} // namespace velmo
