#include "desks/setup_desk.h"
#include "support/qt_printing.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace velmo {

class OnboardingViewTest : public ::testing::Test, protected testing::OnboardingDesk {
protected:
    OnboardingViewTest() {
        QObject::connect(&view, &OnboardingView::completed, [this] { ++completions; });
        QObject::connect(&view, &OnboardingView::closed, [this] { ++closings; });
    }

    /// Each step: "done", "later: note", or "now: button, hint", with ordinary blanks.
    [[nodiscard]] QStringList steps() {
        QStringList texts;
        for (const OnboardingStep &step : view.steps()->rows()) {
            const QString now = u"now: "_s + step.buttonText + u", "_s + step.hint;
            const QString toDo = step.isCurrent ? now : u"later: "_s + step.note;
            const QString text = step.isDone ? u"done"_s : toDo;
            texts.append(QString(text).replace(QChar::Nbsp, u' '));
        }
        return texts;
    }

    int completions = 0;
    int closings = 0;
};

TEST_F(OnboardingViewTest, GoesFromNothingToDone) {
    desktop.accessibility.trusted = false;
    desktop.tap.canStart = false;
    desktop.microphone.permission = MicrophonePermission::Status::NotAsked;
    view.start();
    desktop.queue.runPosted();
    EXPECT_EQ(view.waitingText(), u"Waiting for Accessibility permission..."_s);
    EXPECT_TRUE(steps()[0].startsWith(u"now: Open Keyboard Settings, Velmo cannot watch keys"_s));
    EXPECT_EQ(steps()[1], u"later: This will be needed after step 1."_s);
    EXPECT_EQ(steps()[2], u"later: This will be requested after step 2."_s);
    view.act();
    EXPECT_EQ(desktop.systemSettings.opened.takeFirst(), u"keyboard"_s);

    desktop.accessibility.trusted = true;
    desktop.queue.advance(1s);
    EXPECT_TRUE(view.waitingText().startsWith(u"Configure the Right"_s));
    EXPECT_EQ(steps()[0], u"done"_s);
    EXPECT_TRUE(steps()[1].startsWith(u"now: Choose Another Key…, This keyboard has no Right"_s));
    view.act();
    view.triggerKey()->press(0, 38);
    EXPECT_EQ(steps()[1], u"now: Cancel, This key is needed for writing."_s);
    EXPECT_EQ(desktop.microphone.requests, 0);
    desktop.tap.canStart = true;
    view.triggerKey()->press(Qt::Key_Pause, 127);
    desktop.queue.advance(1s);
    EXPECT_EQ(desktop.microphone.requests, 1) << "asked for without a click";
    EXPECT_EQ(view.waitingText(), u"Grant microphone access to continue..."_s);
    desktop.queue.advance(5s);
    view.act();
    EXPECT_EQ(desktop.microphone.requests, 1) << "who refused is not asked again";

    desktop.microphone.permission = MicrophonePermission::Status::Granted;
    desktop.microphone.isPresent = false;
    desktop.queue.advance(1s);
    EXPECT_TRUE(steps()[2].startsWith(u"now: Open Sound Settings, Connect a microphone"_s));
    view.act();
    EXPECT_EQ(desktop.systemSettings.opened, QStringList{u"sound"_s});

    desktop.microphone.isPresent = true;
    desktop.queue.advance(1s);
    EXPECT_TRUE(view.isAllDone());
    EXPECT_TRUE(view.waitingText().isEmpty());
    EXPECT_EQ(view.doneText(), u"Hold Pause to dictate, or double-tap Pause for hands-free mode."_s);
    desktop.queue.advance(1999ms);
    EXPECT_EQ(completions, 0);
    desktop.queue.advance(1ms);
    EXPECT_EQ(completions, 1);
    EXPECT_EQ(closings, 0) << "there is a field to try";
    view.done();
    EXPECT_EQ(closings, 1);
}

TEST_F(OnboardingViewTest, NamesWhatRecognisesThePrimaryLanguage) {
    const auto look = [this] {
        service.http.waitUntilIdle();
        desktop.queue.runPosted();
    };
    service.runs(R"("engine":"PocketSphinx")", R"("en")");
    view.start();
    look();
    EXPECT_EQ(
        view.speech(),
        u"Speech by PocketSphinx. Norwegian is not understood by this engine. Get a model on the Speech page."_s);
    EXPECT_TRUE(view.isSpeechMissing());
    view.languages()->choosePrimary(4);
    EXPECT_EQ(view.speech(), u"Speech by PocketSphinx"_s);
    EXPECT_EQ(desktop.preferences.string(keys::primaryLanguage), u"en"_s);
    service.server.react("/health", {{{}, testing::Reaction::Then::Close}});
    desktop.queue.advance(2s);
    look();
    EXPECT_TRUE(
        view.speech().contains(u"does not answer. Start it with the command <b>velmo-local-service</b>"_s));
    EXPECT_TRUE(view.isSpeechMissing());
}

} // namespace velmo
