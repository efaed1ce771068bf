#include "platform/linux/x11/x11_input.h"

#include "key_stage.h"
#include "platform/linux/x11/keys/accessibility.h"
#include "support/files.h"
#include "support/manual_main_queue.h"
#include "support/xvfb.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <atomic>
#include <gtest/gtest.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

using testing::waitUntil;
namespace key = testing::key;

class X11InputTest : public ::testing::Test {
protected:
    [[nodiscard]] bool waitFor(const std::function<bool()> &condition) {
        return waitUntil([&] {
            queue.runPosted();
            return condition();
        });
    }

    testing::Xvfb server;
    testing::ManualMainQueue queue;
    X11Input input = makeX11Input(queue, {server.display(), {}});
};

// The fallback hot key

constexpr Hotkey kHotkey{'a', KeyFlag::Control | KeyFlag::Shift};

class HotkeyTest : public X11InputTest {
protected:
    [[nodiscard]] auto registerHotkey() {
        return input.hotkey->registerHotkey(kHotkey, [this] { ++presses; });
    }

    testing::Hands hands{server.display()};
    std::atomic<int> presses = 0;
};

TEST_F(HotkeyTest, WorksUnderEveryStateOfTheLocks) {
    const auto registration = registerHotkey();
    ASSERT_TRUE(registration);
    int expected = 0;
    for (const uint8_t lock : {key::capsLock, key::numLock, key::capsLock, key::numLock}) {
        hands.chord({key::leftControl, key::leftShift, key::letterA});
        ++expected;
        EXPECT_TRUE(waitFor([&] { return presses == expected; })) << "before lock key " << int(lock);
        hands.tap(lock);
    }
}

TEST_F(HotkeyTest, FollowsTheLayout) {
    const auto registration = registerHotkey();
    ASSERT_TRUE(registration);
    EXPECT_EQ(server.start(u"setxkbmap"_s, {u"fr"_s})->outputUntilEnd(), "");
    EXPECT_TRUE(waitFor([&] {
        hands.chord({key::leftControl, key::leftShift, key::frenchA});
        return presses > 0;
    }));
    testing::OtherApplication application(server.display());
    hands.chord({key::leftControl, key::leftShift, key::letterA}); // writes "Q" now
    EXPECT_TRUE(waitFor([&] { return application.seen().contains(u"shiftcontrol+38"); }));

    server.start(u"setxkbmap"_s, {u"gr"_s})->outputUntilEnd(); // which writes no "a"
    presses = 0;
    EXPECT_TRUE(waitFor([&] {
        hands.chord({key::leftControl, key::leftShift, key::letterA});
        return presses > 0;
    }));
}

TEST_F(HotkeyTest, IsRefusedWhenAnotherApplicationHasTheKeyAndGivenBackWhenDropped) {
    {
        testing::OtherApplication application(server.display());
        application.grabKey(key::letterA);
        const auto registration = registerHotkey();
        ASSERT_FALSE(registration);
        EXPECT_EQ(registration.error(), 10); // BadAccess
    }
    EXPECT_TRUE(waitFor([this] { return registerHotkey().has_value(); })); // its end takes a moment
    testing::OtherApplication application(server.display());
    hands.chord({key::leftControl, key::leftShift, key::letterA});
    EXPECT_TRUE(waitFor([&] { return application.seen().contains(u"shiftcontrol+38"); }));
    EXPECT_EQ(presses, 0);
}

// Mouse and keys

TEST_F(X11InputTest, TellsWhereTheMouseIsClicked) {
    testing::Hands hands(server.display());
    QPoint clicked;
    const auto watch = input.mouse->watch([&](QPoint position) { clicked = position; });
    hands.click({600, 300});
    EXPECT_TRUE(waitFor([&] { return !clicked.isNull(); }));
    EXPECT_EQ(clicked, QPoint(600, 300));
}

TEST_F(X11InputTest, KnowsKeysByTheirPlaceAndWhatTheLayoutMakesOfThem) {
    const PhysicalKey trigger = input.keys->keyAt(key::rightControl);
    EXPECT_EQ(trigger.name, u"RCTL"_s);
    EXPECT_TRUE(trigger.refusal.isNull());
    EXPECT_EQ(input.keys->keyAt(key::letterA).name, u"AC01"_s);
    EXPECT_TRUE(input.keys->keyAt(4000).name.isEmpty());
    EXPECT_TRUE(input.keys->keyAt(key::rightAlt).refusal.isNull());
    server.start(u"setxkbmap"_s, {u"no"_s})->outputUntilEnd();
    EXPECT_TRUE(waitFor([&] { return input.keys->keyAt(key::rightAlt).refusal.startsWith(u"AltGr"); }));
}

// Windows

class WorkspaceTest : public X11InputTest {
protected:
    static void SetUpTestSuite() {
        // The library reads these once in a process.
        qputenv("XDG_DATA_HOME", data().path().toUtf8());
        qputenv("XDG_DATA_DIRS", "/nonexistent");
        QDir(data().path()).mkpath(u"applications"_s);
        writeDesktopFile("org.example.Letters", "Name=Letters\nExec=/bin/true %U\n");
        writeDesktopFile("painter", "Name=Paint Studio\nExec=/bin/true\nStartupWMClass=Painter-2.0\n");
        writeDesktopFile("tables", "Name=Tables\nExec=/bin/echo --new\n");
    }

    static QTemporaryDir &data() {
        static QTemporaryDir directory;
        return directory;
    }

    static void writeDesktopFile(const char *id, const QByteArray &lines) {
        testing::writeFile(data().filePath(u"applications/%1.desktop"_s.arg(QLatin1StringView(id))),
                           "[Desktop Entry]\nType=Application\n" + lines);
    }

    void activate(xcb_window_t window) {
        x11::Connection &x = *connection;
        xcb_change_property(x.xcb(), XCB_PROP_MODE_REPLACE, x.root(), x.atom("_NET_ACTIVE_WINDOW"),
                            XCB_ATOM_WINDOW, 32, 1, &window);
        xcb_flush(x.xcb());
    }

    xcb_window_t createWindow(const QByteArray &windowClass) {
        const xcb_window_t window = connection->createWindow(XCB_EVENT_MASK_NO_EVENT);
        setText(window, "WM_CLASS", "STRING", windowClass);
        return window;
    }

    void setText(xcb_window_t window, const char *property, const char *type, const QByteArray &text) {
        x11::Connection &x = *connection;
        xcb_change_property(x.xcb(), XCB_PROP_MODE_REPLACE, window, x.atom(property), x.atom(type), 8,
                            static_cast<uint32_t>(text.size()), text.constData());
    }

    void setProcess(xcb_window_t window, uint32_t process) {
        xcb_change_property(connection->xcb(), XCB_PROP_MODE_REPLACE, window, connection->atom("_NET_WM_PID"),
                            XCB_ATOM_CARDINAL, 32, 1, &process);
    }

    /// What a desktop publishes as its settings; `animations` is the value of one of them.
    void publishSettings(char animations) {
        const QByteArray settings = QByteArray("\0\0\0\0\1\0\0\0\3\0\0\0", 12) +
                                    QByteArray("\1\0\3\0Net\0\0\0\0\0\5\0\0\0Light\0\0\0", 24) +
                                    QByteArray("\2\0\4\0Tint\0\0\0\0ABCDEFGH", 20) +
                                    QByteArray("\0\0\x14\0Gtk/EnableAnimations\0\0\0\0", 28) + animations +
                                    QByteArray("\0\0\0", 3);
        setText(manager, "_XSETTINGS_SETTINGS", "_XSETTINGS_SETTINGS", settings);
        xcb_set_selection_owner(connection->xcb(), manager, connection->atom("_XSETTINGS_S0"),
                                XCB_CURRENT_TIME);
        xcb_flush(connection->xcb());
    }
    [[nodiscard]] bool comesToReducedMotion(bool expected) {
        return waitFor([&] { return input.motion->isReduced() == expected; });
    }

    std::unique_ptr<x11::Connection> connection = std::move(*x11::Connection::open(server.display()));
    xcb_window_t manager = connection->createWindow(XCB_EVENT_MASK_NO_EVENT);
};

QByteArray windowClass(const char *instance, const char *className) {
    return QByteArray(instance) + '\0' + className + '\0';
}

TEST_F(WorkspaceTest, CallsApplicationsAsPeopleDo) {
    struct Row {
        const char *label;
        QByteArray windowClass; ///< Instance and class, each ended by NUL.
        const char *hint;       ///< Property by which a toolkit tells its desktop file; may be null.
        const char *hintedFile;
        const char *name;
    };
    const Row rows[] = {

        {"ToolkitNamesTheFile", windowClass("x", "X"), "_KDE_NET_WM_DESKTOP_FILE", "org.example.Letters",
         "Letters"},
        {"OtherToolkitNamesTheFile", windowClass("x", "X"), "_GTK_APPLICATION_ID", "painter", "Paint Studio"},
        {"FileNamesTheClass", windowClass("p", "painter-2.0"), nullptr, "", "Paint Studio"},
        {"FileIsCalledAsTheClass", windowClass("l", "letters"), nullptr, "", "Letters"},
        {"FileStartsTheProgram", windowClass("echo", "Echo"), nullptr, "", "Tables"},
        {"NoFile", windowClass("xyz", "Xyz"), nullptr, "", "Xyz"},
        {"OnlyATitle", "", nullptr, "", "Åpen fil"},
    };
    for (const Row &row : rows) {
        const xcb_window_t window = createWindow(row.windowClass);
        if (row.hint)
            setText(window, row.hint, "UTF8_STRING", row.hintedFile);
        setText(window, "_NET_WM_NAME", "UTF8_STRING", "Åpen fil");
        activate(window);
        const QString name = QString::fromUtf8(row.name);
        EXPECT_TRUE(waitFor([&] { return input.workspace->frontmostApplicationName() == name; }))
            << row.label << input.workspace->frontmostApplicationName().value_or(QString()).toStdString();
    }
}

TEST_F(WorkspaceTest, TellsWhenThisOrAnotherApplicationComesToTheFront) {
    std::vector<bool> activations;
    input.workspace->setActivationHandler([&](bool isThis) { activations.push_back(isThis); });
    const auto own = createWindow(windowClass("velmo", "Velmo"));
    setProcess(own, static_cast<uint32_t>(getpid()));
    activate(createWindow(windowClass("other", "Other")));
    EXPECT_TRUE(waitFor([&] { return activations.size() == 1; }));
    activate(own);
    EXPECT_TRUE(waitFor([&] { return activations.size() == 2; }));
    activate(XCB_WINDOW_NONE);
    EXPECT_TRUE(waitFor([&] { return !input.workspace->frontmostApplicationName(); }));
    EXPECT_EQ(activations, std::vector({false, true}));
}

TEST_F(WorkspaceTest, KeepsTheApplicationWhileAWindowOfOursBorrowsTheKeyboard) {
    activate(createWindow(windowClass("other", "Other")));
    EXPECT_TRUE(waitFor([&] { return input.workspace->frontmostApplicationName() == u"Other"; }));
    const auto own = createWindow(windowClass("velmo", "Velmo"));
    setProcess(own, static_cast<uint32_t>(getpid()));
    xcb_map_window(connection->xcb(), own);
    xcb_set_input_focus(connection->xcb(), XCB_INPUT_FOCUS_NONE, own, XCB_CURRENT_TIME);
    activate(XCB_WINDOW_NONE);
    publishSettings(0);
    EXPECT_TRUE(comesToReducedMotion(true)); // which is heard after the others
    EXPECT_EQ(input.workspace->frontmostApplicationName(), u"Other");
}

TEST_F(WorkspaceTest, KnowsWhatPanelsLeaveFreeOfEachScreen) {
    const auto setNumbers = [this](xcb_window_t window, const char *property,
                                   const std::vector<uint32_t> &values) {
        xcb_change_property(connection->xcb(), XCB_PROP_MODE_REPLACE, window, connection->atom(property),
                            XCB_ATOM_CARDINAL, 32, static_cast<uint32_t>(values.size()), values.data());
    };
    struct Row {
        const char *name;
        std::vector<uint32_t> strut; ///< In its whole form, or from the borders of the display.
        QRect left;                  ///< Of a screen of 640 × 800.
        QRect right;                 ///< Of one of 640 × 600 beside it.
    };
    const QRect left(0, 0, 640, 800);
    const QRect right(640, 0, 640, 600);
    constexpr uint32_t huge = 0xffffffff;
    const Row rows[] = {
        {"none", {}, left, right},
        {"below the left", {0, 0, 0, 60, 0, 0, 0, 0, 0, 0, 0, 639}, QRect(0, 0, 640, 740), right},
        {"below the right", {0, 0, 0, 230, 0, 0, 0, 0, 0, 0, 640, 1279}, left, QRect(640, 0, 640, 570)},
        {"between them", {690, 0, 0, 0, 0, 599, 0, 0, 0, 0, 0, 0}, left, QRect(690, 0, 590, 600)},
        {"above both", {0, 0, 28, 0}, QRect(0, 28, 640, 772), QRect(640, 28, 640, 572)},
        {"at the right", {0, 48, 0, 0}, left, QRect(640, 0, 592, 600)},
        {"nonsense", {huge, 5, huge, 0, 7, 3, huge, 0x80000000, 0, 0, 0, 0}, left, right},
    };
    for (const Row &row : rows) {
        const auto panel = createWindow(windowClass("panel", "Panel"));
        setNumbers(panel, row.strut.size() == 12 ? "_NET_WM_STRUT_PARTIAL" : "_NET_WM_STRUT", row.strut);
        setNumbers(connection->root(), "_NET_CLIENT_LIST", {panel});
        connection->waitForServer();
        EXPECT_EQ(input.floating->freeOf(left), row.left) << row.name;
        EXPECT_EQ(input.floating->freeOf(right), row.right) << row.name;
    }
}

TEST_F(WorkspaceTest, FollowsTheDesktopsWishForLessMotion) {
    int changes = 0;
    input.motion->setChangeHandler([&] { ++changes; });
    EXPECT_FALSE(input.motion->isReduced());
    for (const char animations : {0, 1, 0}) {
        publishSettings(animations);
        EXPECT_TRUE(comesToReducedMotion(animations == 0));
    }
    xcb_destroy_window(connection->xcb(), manager);
    xcb_flush(connection->xcb());
    EXPECT_TRUE(comesToReducedMotion(false));
    EXPECT_TRUE(waitFor([&] { return changes == 4; }));
}

// Where nothing can be done

TEST(X11InputWithoutDisplay, SaysSoInEveryPart) {
    testing::ManualMainQueue queue;
    const X11Input input = makeX11Input(queue, {u":98765"_s, {}});
    EXPECT_FALSE(input.tap->start(u"RCTL"_s, [](const TapEvent &) { return TapAnswer::Pass; }));
    EXPECT_FALSE(input.hotkey->registerHotkey(kHotkey, [] {}));
    EXPECT_FALSE(input.mouse->watch([](QPoint) {}));
    EXPECT_TRUE(input.keys->keyAt(key::letterA).name.isEmpty());
    EXPECT_FALSE(input.workspace->frontmostApplicationName());
    EXPECT_FALSE(input.permission->isTrusted());
}

TEST(Sessions, DecideWhatIsPermitted) {
    const struct {
        const char *name;
        bool canObserve;
        bool canInject;
        const char *sessionType;
        const char *waylandDisplay;
        bool isTrusted;
    } rows[] = {{"X11", true, true, "x11", "", true},
                {"UnnamedSession", true, true, "", "", true},
                {"X11WithANestedCompositor", true, true, "x11", "wayland-1", true},
                {"Wayland", true, true, "wayland", "wayland-0", false},
                {"WaylandUnnamed", true, true, "", "wayland-0", false},
                {"NoDisplay", false, false, "", "", false},
                {"NoInjection", true, false, "x11", "", false}};
    for (const auto &row : rows) {
        QProcessEnvironment environment;
        environment.insert(u"XDG_SESSION_TYPE"_s, QLatin1StringView(row.sessionType));
        environment.insert(u"WAYLAND_DISPLAY"_s, QLatin1StringView(row.waylandDisplay));
        const x11::Accessibility permission(row.canObserve, row.canInject, environment);
        EXPECT_EQ(permission.isTrusted(), row.isTrusted) << row.name;
    }
}

} // namespace

} // namespace velmo
