#include "desks/setup_desk.h"
#include "support/qt_printing.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace velmo {

class SettingsViewTest : public ::testing::Test, protected testing::SettingsDesk {
protected:
    /// "title|subtitle|granted" of each permission, with ordinary blanks; "|open" behind those with a button.
    [[nodiscard]] QStringList permissions() {
        QStringList rows;
        for (const PermissionRow &row : view.permissions()->rows()) {
            QString text = row.title + u'|' + row.subtitle + (row.isGranted ? u"|granted"_s : u"|missing"_s);
            if (row.canOpenSettings)
                text += u"|open"_s;
            rows.append(text.replace(QChar::Nbsp, u' '));
        }
        return rows;
    }
};

TEST_F(SettingsViewTest, TakesAnUnknownReachOfTheRulesForTheSelectedLanguages) {
    view.setFollowsSpokenLanguage(true);
    EXPECT_EQ(desktop.preferences.string(keys::ruleScope), u"spoken"_s);
    desktop.preferences.set(keys::ruleScope, u"anything else"_s);
    desktop.watch.noteWrite();
    desktop.queue.runPosted();
    EXPECT_FALSE(view.followsSpokenLanguage());
}

TEST_F(SettingsViewTest, TakesAnotherTriggerKeyThatIsPressed) {
    desktop.listener.setupFnKey();
    TriggerKeyCapture &key = *view.triggerKey();
    EXPECT_EQ(key.instruction(), u"Hold to talk, double-tap for hands-free"_s);
    key.press(Qt::Key_Pause, 127);
    EXPECT_EQ(desktop.tap.key, u"RCTL"_s) << "nothing was waited for";

    key.begin();
    EXPECT_TRUE(desktop.tap.key.isNull()) << "the present key can be pressed too";
    EXPECT_TRUE(key.instruction().startsWith(u"Press the key you want to dictate with. Esc keeps Right"_s));
    key.press(0, 38);
    key.press(Qt::Key_Escape, 9);
    EXPECT_TRUE(key.refusal().isNull());
    EXPECT_EQ(desktop.tap.key, u"RCTL"_s);

    key.begin();
    key.press(Qt::Key_Pause, 127);
    EXPECT_EQ(key.keyName(), u"Pause"_s);
    EXPECT_EQ(desktop.preferences.string(keys::triggerKey), u"PAUS"_s);
    EXPECT_EQ(desktop.tap.key, u"PAUS"_s);
    EXPECT_EQ(permissions().back(), u"Pause Key|Active — Pause key interception enabled|granted"_s);

    key.begin();
    view.disappear();
    EXPECT_FALSE(key.isCapturing()) << "the page is left";
}

TEST_F(SettingsViewTest, TellsWhatIsMissingAndWhereToChangeIt) {
    view.appear();
    EXPECT_TRUE(permissions()[2].endsWith(u"key. Choose another.|missing"_s))
        << permissions()[2].toStdString();
    desktop.accessibility.trusted = false;
    desktop.microphone.isPresent = false;
    view.appear();
    EXPECT_EQ(permissions()[0], u"Microphone|Required for voice recording|missing|open"_s);
    EXPECT_TRUE(permissions()[1].endsWith(u"key and text insertion|missing|open"_s));
    EXPECT_TRUE(permissions()[2].endsWith(u"Key|Requires Accessibility permission|missing|open"_s));
    EXPECT_TRUE(view.keysNote().contains(u"<b>velmo toggle</b>"_s));
    view.openSettings(0);
    view.openSettings(2);
    EXPECT_EQ(desktop.systemSettings.opened.join(u' '), u"sound keyboard"_s);

    desktop.systemSettings.pages.clear();
    desktop.accessibility.trusted = true;
    desktop.listener.setupFnKey();
    EXPECT_TRUE(permissions()[2].endsWith(u"key interception enabled|granted"_s)) << "follows by itself";
    EXPECT_TRUE(permissions()[0].endsWith(u"|missing"_s)) << "no page to open";
    EXPECT_TRUE(view.keysNote().isEmpty());
}

TEST_F(SettingsViewTest, SaysOnceWhyItCannotStartAtLogin) {
    EXPECT_EQ(view.deviceId(), u"—"_s);
    desktop.loginItem.failure = u"Could not change it"_s;
    view.setStartsAtLogin(true);
    view.appear();
    EXPECT_TRUE(view.startsAtLoginError().isEmpty());
}

} // namespace velmo
