#include "app/command_line/velmo_program.h"
#include "store/history_entry.h"
#include "store/preference_keys.h"
#include "support/accessibility_bus.h"
#include "support/private_bus.h"
#include "support/pulse_server.h"
#include "support/wait_until.h"
#include "support/xvfb.h"

#include <QPoint>
#include <QRegularExpression>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace velmo {

/// The real application between a real tray, window manager and editor, used with the mouse.
class DesktopInterfaceTest : public ::testing::Test {
protected:
    DesktopInterfaceTest() {
        display.startWindowManager();
        tray = display.start(u"trayer"_s, {u"--edge"_s, u"top"_s, u"--align"_s, u"right"_s});
        program.setEnvironment(u"DBUS_SESSION_BUS_ADDRESS"_s, bus.address());
        program.setEnvironment(u"DISPLAY"_s, display.display());
        static_cast<void>(
            program.run({u"defaults"_s, u"write"_s, u"velmoOnboardingComplete"_s, u"--bool"_s, u"true"_s}));
        application = program.start({});
        EXPECT_TRUE(bus.waitForName(u"com.tarnwell.velmo"_s));
    }
    ~DesktopInterfaceTest() override {
        static_cast<void>(program.run({u"quit"_s}));
        application->waitForFinished(60000);
    }

    QString output(const QString &command, const QStringList &arguments) {
        return QString::fromUtf8(display.start(command, arguments)->outputUntilEnd());
    }
    [[nodiscard]] QString windows() { return output(u"xwininfo"_s, {u"-root"_s, u"-tree"_s}); }
    [[nodiscard]] QString focus() { return output(u"xdotool"_s, {u"getwindowfocus"_s}); }
    [[nodiscard]] bool comesTo(const QString &state) {
        return testing::waitUntil([&] { return program.run({u"status"_s}).output == state.toUtf8() + '\n'; });
    }
    void click(QPoint at) {
        output(u"xdotool"_s,
               {u"mousemove"_s, QString::number(at.x()), QString::number(at.y()), u"click"_s, u"1"_s});
    }
    /// The middle of the icon, once the tray at the right edge has taken it in: until then it is in the corner.
    [[nodiscard]] QPoint trayIcon() {
        const QRegularExpression icon(
            u"\"velmo\".* (\\d\\d)x\\d\\d\\+\\d+\\+\\d+  \\+([1-9]\\d*)\\+(\\d+)"_s);
        QRegularExpressionMatch found;
        EXPECT_TRUE(testing::waitUntil([&] { return (found = icon.match(windows())).hasMatch(); }));
        const int half = found.captured(1).toInt() / 2;
        return {found.captured(2).toInt() + half, found.captured(3).toInt() + half};
    }

    testing::PulseServer sound{
        {testing::PulseServer::toneMicrophone(u"microphone"_s), u"set-default-source microphone"_s}};
    testing::PrivateBus bus;
    testing::Xvfb display;
    testing::VelmoProgram program;
    std::unique_ptr<testing::DisplayProgram> tray;
    std::unique_ptr<QProcess> application;
};

TEST_F(DesktopInterfaceTest, OpensThePopoverFromTheTray) {
    testing::AccessibilityBus screenReader(bus);
    const auto showsPopover = [&screenReader](bool isShown) {
        return testing::waitUntil(
            [&] { return screenReader.shown().contains(u"push button: Quit Velmo"_s) == isShown; });
    };
    const QPoint icon = trayIcon();
    click(icon);
    EXPECT_TRUE(showsPopover(true));
    click(icon);
    EXPECT_TRUE(showsPopover(false));
    click({icon.x() + 1, icon.y() + 8}); // another press than the one that closed it
    EXPECT_TRUE(showsPopover(true));
    output(u"xdotool"_s, {u"key"_s, u"Escape"_s});
    EXPECT_TRUE(showsPopover(false));
    click(icon);
    EXPECT_TRUE(showsPopover(true));
    click({300, 500});
    EXPECT_TRUE(showsPopover(false));
}

TEST_F(DesktopInterfaceTest, DictatesByMouseOverAFullScreenWindowThatKeepsTheKeyboard) {
    const auto editor =
        display.start(u"xterm"_s, {u"-fullscreen"_s, u"-T"_s, u"Editor"_s, u"-e"_s, u"cat"_s});
    const QRegularExpression barAboveEditor(u"\"Velmo\".* 392x92\\+.*1280x800\\+0\\+0  \\+0\\+0"_s,
                                            QRegularExpression::DotMatchesEverythingOption);
    ASSERT_TRUE(testing::waitUntil([&] {
        return windows().contains(barAboveEditor) &&
               output(u"xdotool"_s, {u"getwindowfocus"_s, u"getwindowname"_s}).trimmed() == u"Editor"_s;
    }));
    testing::AccessibilityBus screenReader(bus);
    const QString focused = focus();
    click(screenReader.middleOf(u"push button: Start dictation"_s));
    EXPECT_TRUE(comesTo(u"recording"_s));
    EXPECT_EQ(focus(), focused);
    click(screenReader.middleOf(u"push button: Cancel dictation"_s));
    EXPECT_TRUE(comesTo(u"idle"_s));
    EXPECT_EQ(focus(), focused);
}

TEST_F(DesktopInterfaceTest, NamesEveryControlForAScreenReader) {
    const auto history = encodeEntries({{u"A"_s, u"Møtet er klokka ti."_s, Date(), 2}});
    static_cast<void>(program.run({u"defaults"_s, u"write"_s, QString(keys::transcriptionHistory),
                                   u"--data"_s, QString::fromLatin1(history->toBase64())}));
    testing::AccessibilityBus screenReader(bus); // starts after Velmo
    static_cast<void>(program.run({u"show"_s}));
    click(trayIcon());
    const QSet<QString> expected = {
        u"push button: Start dictation"_s, u"push button: Settings"_s, u"push button: Open Velmo"_s,
        u"push button: Quit Velmo"_s,      u"list: Recent"_s,          u"list item: Møtet er klokka ti."_s};
    const QSet<QString> controls = {u"push button"_s, u"check box"_s, u"radio button"_s, u"toggle button"_s,
                                    u"text"_s,        u"combo box"_s, u"list item"_s,    u"menu item"_s};
    QSet<QString> told;
    EXPECT_TRUE(testing::waitUntil([&] {
        told = screenReader.shown();
        return told.contains(expected);
    })) << QStringList(told.begin(), told.end()).join(u'\n').toStdString();
    for (const QString &control : controls)
        EXPECT_FALSE(told.contains(control + u": "_s)) << "nameless " << control.toStdString();
}

TEST_F(DesktopInterfaceTest, ChangesItsShapeWithTheCompositor) {
    const QRegularExpression bar(u"(0x[0-9a-f]+) \"Velmo\".* 392x92\\+"_s);
    QString window;
    ASSERT_TRUE(testing::waitUntil([&] { return !(window = bar.match(windows()).captured(1)).isEmpty(); }));
    const auto hasShape = [&](bool expected) {
        return testing::waitUntil([&] {
            return output(u"xwininfo"_s, {u"-shape"_s, u"-id"_s, window}).contains(u"50x8"_s) == expected;
        });
    };
    EXPECT_TRUE(hasShape(true));
    auto compositor = display.start(u"picom"_s, {u"--backend"_s, u"xrender"_s});
    EXPECT_TRUE(hasShape(false));
    compositor.reset();
    EXPECT_TRUE(hasShape(true));
}

} // namespace velmo
