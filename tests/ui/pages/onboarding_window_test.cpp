#include "desks/setup_desk.h"
#include "support/person.h"
#include "support/qt_printing.h"
#include "support/wait_until.h"
#include "ui/onboarding/onboarding_window_controller.h"

#include <QCoreApplication>
#include <QPointer>
#include <QQmlEngine>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace velmo {

class OnboardingWindowTest : public ::testing::Test, protected testing::OnboardingDesk {
protected:
    [[nodiscard]] bool isComplete() const {
        return desktop.preferences.boolean(keys::onboardingComplete).value_or(false);
    }

    QQmlEngine engine;
    OnboardingWindowController controller{engine, desktop.preferences, view};
};

TEST_F(OnboardingWindowTest, LeadsFromNothingToDone) {
    desktop.tap.canStart = false;
    desktop.microphone.isPresent = false;
    controller.show();
    testing::Person person(*controller.window());
    EXPECT_TRUE(person.sees(u"Step 2: Right\u00a0Control Key Setup"_s));
    person.click(u"Choose Another Key…"_s);
    desktop.tap.canStart = true;
    person.pressKeyAt(127, Qt::Key_Pause);
    desktop.queue.advance(1s);
    EXPECT_TRUE(person.sees(u"Grant microphone access to continue..."_s));

    // Closed and shown again it is the same window; nothing is polled meanwhile.
    controller.window()->close();
    EXPECT_EQ(desktop.queue.pendingTimers(), 0U);
    EXPECT_FALSE(isComplete());
    controller.show();
    desktop.microphone.isPresent = true;
    desktop.queue.advance(1s);
    ASSERT_TRUE(testing::waitUntil([&] { return person.focused() == u"Done"_s; }));
    const QPointer<QQuickWindow> window = controller.window();
    desktop.queue.advance(2s);
    EXPECT_TRUE(isComplete());
    ASSERT_TRUE(testing::waitUntil([&] { return person.sees(u"Try It"_s); }));
    person.tabTo(u"Try It"_s);
    person.press(Qt::Key_Space);
    EXPECT_EQ(person.focused(), u"Dictate here"_s) << "the text will come there";
    person.tabTo(u"Done"_s);
    person.press(Qt::Key_Return);
    EXPECT_FALSE(controller.window());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(window);
}

TEST_F(OnboardingWindowTest, WaitsForDoneWhenNothingIsMissing) {
    desktop.listener.setupFnKey();
    controller.show();
    testing::Person person(*controller.window());
    desktop.queue.advance(10s);
    EXPECT_FALSE(isComplete());
    EXPECT_EQ(person.focused(), u"Done"_s);
    person.press(Qt::Key_Return);
    EXPECT_TRUE(isComplete());
}

TEST_F(OnboardingWindowTest, GoesOnWithoutKeysWhereASessionHasNone) {
    desktop.accessibility.trusted = false;
    controller.show();
    testing::Person person(*controller.window());
    person.tabTo(u"Open Keyboard Settings"_s);
    person.tabTo(u"Done"_s);
    person.press(Qt::Key_Return);
    EXPECT_FALSE(controller.window());
    EXPECT_TRUE(desktop.preferences.boolean(keys::keylessSetupComplete).value_or(false));
    EXPECT_FALSE(isComplete()) << "a session with keys is still to be set up";
}

} // namespace velmo
