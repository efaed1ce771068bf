#include "platform/linux/x11/insertion/insertion_desktop.h"
#include "platform/linux/x11/key_stage.h"
#include "platform/linux/x11/x11_input.h"

#include <atomic>

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

namespace key = testing::key;

constexpr uint8_t kLeftAlt = 64;
constexpr uint8_t kLetterV = 55;
constexpr uint8_t kMenu = 135;

class KeyInjection : public testing::InsertionDesktop {
protected:
    QByteArray shortcutAt(testing::Puppet &puppet, PasteShortcut shortcut = PasteShortcut::ControlV) {
        bool sent = false;
        x11->keyInjector().press(shortcut, [&sent](bool success) { sent = success; });
        EXPECT_TRUE(waitFor([&sent] { return sent; }));
        return lineOf(puppet);
    }
};

struct Layout {
    const char *name;
    QStringList arguments;
    bool second; ///< The second layout is active; the menu key switches.
    PasteShortcut shortcut;
    const char *received;
};

void PrintTo(const Layout &layout, std::ostream *out) {
    *out << layout.name;
}

class InjectionUnderLayout : public KeyInjection, public ::testing::WithParamInterface<Layout> {};

TEST_P(InjectionUnderLayout, IsReceivedAsTheShortcut) {
    const QStringList option = {u"-option"_s, u"grp:menu_toggle"_s};
    server.start(u"setxkbmap"_s, GetParam().arguments + option)->outputUntilEnd();
    if (GetParam().second)
        testing::Hands(server.display()).tap(kMenu); // xdotool would switch back
    const auto target = openEditor();
    open();
    EXPECT_EQ(shortcutAt(*target, GetParam().shortcut), GetParam().received);
}

INSTANTIATE_TEST_SUITE_P(
    X11, InjectionUnderLayout,
    ::testing::Values(
        Layout{"us", {u"us"_s}, false, PasteShortcut::ControlV, "Ctrl+V"},
        Layout{"terminal", {u"us"_s}, false, PasteShortcut::ControlShiftV, "Ctrl+Shift+V"},
        Layout{"old_terminal", {u"no"_s}, false, PasteShortcut::ShiftInsert, "Shift+Ins"},
        Layout{"dvorak", {u"us"_s, u"dvorak"_s}, false, PasteShortcut::ControlV, "Ctrl+V"},
        Layout{"second_layout", {u"us,us"_s, u",dvorak"_s}, true, PasteShortcut::ControlV, "Ctrl+V"},
        Layout{"greek_active", {u"us,gr"_s}, true, PasteShortcut::ControlV, "Ctrl+V"},
        Layout{"greek_alone", {u"gr"_s}, false, PasteShortcut::ControlV, "Shift+Ins"}),
    [](const auto &info) { return std::string(info.param.name); });

TEST_F(KeyInjection, ReleasesWhatThePersonHolds) {
    const auto target = openEditor();
    open();
    testing::Hands hands(server.display());
    const auto held = {key::leftShift, key::leftControl, kLeftAlt};
    for (const uint8_t code : held)
        hands.press(code);
    EXPECT_EQ(shortcutAt(*target), "Ctrl+V");
    for (const uint8_t code : held)
        hands.release(code);
    hands.tap(kLetterV);
    EXPECT_EQ(lineOf(*target), "V") << "a modifier of ours is still down";
    EXPECT_EQ(shortcutAt(*target), "Ctrl+V");
}

struct Trigger {
    const char *name;
    uint8_t code;
};

void PrintTo(const Trigger &trigger, std::ostream *out) {
    *out << trigger.name;
}

class InjectionWhileTriggerIsHeld : public KeyInjection, public ::testing::WithParamInterface<Trigger> {};

TEST_P(InjectionWhileTriggerIsHeld, ReachesTheOtherApplication) {
    const auto target = openEditor();
    open();
    X11Input input = makeX11Input(queue, {server.display(), QStringLiteral(VELMO_KEY_GUARD)});
    std::atomic<bool> pressed = false;
    ASSERT_TRUE(input.tap->start(QString::fromLatin1(GetParam().name), [&pressed](const TapEvent &) {
        pressed = true;
        return TapAnswer::Suppress;
    }));
    testing::Hands hands(server.display());
    hands.press(GetParam().code);
    ASSERT_TRUE(waitFor([&pressed] { return pressed.load(); }));
    EXPECT_EQ(shortcutAt(*target), "Ctrl+V");
    hands.release(GetParam().code);
}

INSTANTIATE_TEST_SUITE_P(X11, InjectionWhileTriggerIsHeld,
                         ::testing::Values(Trigger{"RCTL", key::rightControl}, Trigger{"MENU", kMenu}),
                         [](const auto &info) { return std::string(info.param.name); });

TEST_F(KeyInjection, PressesKeysThatAreDownAlready) {
    const auto target = openEditor();
    open();
    xdotool({u"keydown"_s, u"ctrl"_s, u"keydown"_s, u"shift"_s});
    EXPECT_EQ(shortcutAt(*target), "Ctrl+V");
}

class WithoutInjection : public testing::InsertionDesktop {
protected:
    WithoutInjection() : InsertionDesktop({u"-extension"_s, u"XTEST"_s}) {}
};

TEST_F(WithoutInjection, LeavesTheTextOnTheClipboard) {
    open();
    insert(u"blåbær"_s);
    EXPECT_TRUE(waitFor([this] { return inserter->notice() == u"Copied - press Ctrl+V"_s; }));
    EXPECT_EQ(paste(), "blåbær");
}

} // namespace

} // namespace velmo
