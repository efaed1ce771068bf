#include "support/qt_printing.h"
#include "support/wait_until.h"
#include "ui/controls/interface_setup.h"
#include "ui/floating/floating_content.h"
#include "ui/floating/floating_view.h"
#include "ui/models/floating_bar.h"
#include "ui/overlay/recording_overlay_controller.h"
#include "ui/quick/animation_clock.h"
#include "ui/quick/floating_fakes.h"
#include "ui/shown_dictation.h"

#include <QCursor>
#include <QGuiApplication>
#include <QQmlEngine>
#include <QQuickItem>
#include <QScreen>
#include <QTest>
#include <algorithm>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace velmo {

namespace {

// Middles of the bar's controls, from its left edge.
constexpr int kCancel = 16 + 24 + 8 + 11;
constexpr int kStop = 360 - 16 - 14;

QList<QQuickItem *> itemsIn(const QQuickItem &item, QByteArrayView qmlType) {
    QList<QQuickItem *> items;
    for (QQuickItem *child : item.childItems()) {
        if (QByteArrayView(child->metaObject()->className()).startsWith(qmlType))
            items.append(child);
        items += itemsIn(*child, qmlType);
    }
    return items;
}

/// The overlay as it stands at the foot of a screen, and a dictation it shows.
class OverlayTest : public ::testing::Test {
protected:
    OverlayTest() {
        auto made = std::make_unique<FloatingBar>(FloatingBar::Collaborators{
            stage.queue, stage.triggerKeyName, stage.manager, stage.levelMeter, stage.inserter});
        bar = made.get();
        controller.show(std::move(made));
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&panel()));
        QTest::mouseMove(&panel(), QPoint(1, 1));
    }

    [[nodiscard]] FloatingView &panel() { return *controller.overlayPanel(); }
    /// Where the handle and, while active, the middle of the bar are.
    [[nodiscard]] QPoint handle() { return {panel().width() / 2, panel().height() - 8 - 7}; }
    [[nodiscard]] QPoint barAt(int x) { return {(panel().width() - 360) / 2 + x, panel().height() - 8 - 30}; }

    void click(QPoint at) {
        QTest::mouseClick(&panel(), Qt::LeftButton, {}, at);
        stage.queue.runPosted();
    }
    /// Clicks as soon as what is clicked on is there; bar and handle come with a movement.
    [[nodiscard]] bool clickLeadsTo(State state, QPoint at) {
        return testing::waitUntil([this, state, at] {
            animations.moveOn(25ms);
            click(at);
            return stage.manager.state() == state;
        });
    }
    /// What takes the mouse: the sizes, from the lowest up.
    [[nodiscard]] QString inputSizes() {
        QStringList sizes;
        for (const QRect &area : desktop.inputRegion)
            sizes.append(u"%1x%2"_s.arg(area.width()).arg(area.height()));
        return sizes.join(u' ');
    }

    [[nodiscard]] QList<QQuickItem *> items(QByteArrayView qmlType) {
        return itemsIn(*panel().content(), qmlType);
    }
    [[nodiscard]] QList<qreal> dotHeights() {
        QList<qreal> heights;
        for (const QQuickItem *dot : items("AudioDotView"))
            heights.append(dot->childItems().first()->height());
        return heights;
    }
    /// The voice fills the row.
    void hear(double level) {
        for (int sample = 0; sample < 20; ++sample) {
            stage.levelMeter.receiveLevel(level);
            stage.queue.advance(50ms);
        }
    }

    testing::AnimationClock animations;
    testing::FakeFloatingWindows desktop;
    testing::FakeMouseMonitor mouse;
    QQmlEngine engine;
    testing::ManualMainQueue panelQueue;
    RecordingOverlayController controller{{engine, panelQueue, desktop, mouse}};
    testing::ShownDictation stage{&controller};
    FloatingBar *bar = nullptr;
};

TEST_F(OverlayTest, CarriesAWholeDictationByMouse) {
    EXPECT_EQ(inputSizes(), u"72x24"_s);
    stage.workspace.name = u"éditeur"_s;
    click(handle());
    EXPECT_EQ(stage.manager.state(), State::recording);
    EXPECT_EQ(inputSizes(), u"360x44"_s);
    EXPECT_EQ(bar->initial(), u"É"_s);

    stage.queue.advance(1s);
    ASSERT_TRUE(clickLeadsTo(State::transcribing, barAt(kStop)));
    EXPECT_FALSE(items("BarButton").first()->isEnabled());
    click(barAt(kCancel)); // too late
    click(barAt(kStop));
    EXPECT_EQ(stage.manager.state(), State::transcribing);

    stage.transcriber.complete(Transcript{u"Hei"_s, u"no"_s});
    stage.queue.runPosted();
    stage.processor.complete({u"Hei"_s, true});
    stage.queue.runPosted();
    EXPECT_EQ(stage.clipboard.text(), u"Hei"_s);
    EXPECT_EQ(bar->message(), u"Mode not applied"_s);
    EXPECT_FALSE(bar->isWarning());
    stage.queue.advance(4s);
    EXPECT_EQ(inputSizes(), u"72x24"_s);
    click(handle());
    EXPECT_EQ(stage.manager.notice(), QString()) << "it was about the last text";
}

TEST_F(OverlayTest, CancelsByMouse) {
    click(handle());
    EXPECT_TRUE(clickLeadsTo(State::idle, barAt(kCancel)));
    EXPECT_EQ(stage.recorder.deleted.size(), 1);
}

TEST_F(OverlayTest, TellsHowToBeginWhileThePointerIsThere) {
    QTest::mouseMove(&panel(), handle());
    ASSERT_TRUE(testing::waitUntil([&] { return desktop.inputRegion.size() == 2; }));
    const QRect tip = desktop.inputRegion[1];
    EXPECT_EQ(tip.height(), 32);
    EXPECT_TRUE(desktop.inputRegion[0].intersects(tip)) << "the pointer gets from the handle to the tip";
    click(tip.center());
    EXPECT_EQ(stage.manager.state(), State::recording);
}

TEST_F(OverlayTest, ShowsWhatWentWrongForAWhile) {
    stage.recorder.failure = u"No microphone found."_s;
    click(handle());
    QTest::mouseMove(&panel(), QPoint(1, 1));
    EXPECT_EQ(bar->message(), u"Failed to start recording: No microphone found."_s);
    EXPECT_TRUE(bar->isWarning());
    EXPECT_EQ(desktop.inputRegion.size(), 2);
    stage.queue.advance(4s);
    EXPECT_EQ(bar->message(), QString());
    EXPECT_EQ(inputSizes(), u"72x24"_s);

    // Nothing was pasted; the person has to do it.
    stage.recorder.failure.reset();
    stage.keys.possible = false;
    stage.dictate(u"Hei"_s);
    EXPECT_EQ(bar->message(), u"Copied - press Ctrl+V"_s);
    EXPECT_FALSE(bar->isWarning());
}

TEST_F(OverlayTest, HasTheShapeOfWhatItDrawsWithoutACompositor) {
    EXPECT_TRUE(panel().mask().isEmpty());
    desktop.composited = false;
    desktop.events.compositionChanged();
    EXPECT_EQ(panel().mask().boundingRect().size(), QSize(50, 8)); // the handle and its ring
    click(handle());
    EXPECT_EQ(panel().mask().boundingRect().size(), QSize(360, 44));
    desktop.composited = true;
    desktop.events.compositionChanged();
    EXPECT_TRUE(panel().mask().isEmpty());
}

TEST_F(OverlayTest, DoesWithoutTransitionsWhereLessMotionIsWanted) {
    const auto swings = [this] { return panel().content()->property("swings").toBool(); };
    EXPECT_TRUE(swings());
    setReducedMotion(engine, true);
    EXPECT_FALSE(swings());
    click(handle());
    EXPECT_TRUE(clickLeadsTo(State::idle, barAt(kCancel)));
}

TEST_F(OverlayTest, GoesToTheScreenOfAClickAndOfADictation) {
    const QList<QScreen *> screens = QGuiApplication::screens();
    const int left = panel().x();
    const int leftOfSecond = RecordingOverlayController::placement(screens[1]->geometry()).x();
    const int halfway = (left + leftOfSecond) / 2;
    QCursor::setPos(screens[1]->geometry().center());
    animations.moveOn(1s);
    EXPECT_EQ(panel().x(), left) << "the pointer alone moves nothing";
    mouse.click({});
    animations.moveOn(150ms);
    EXPECT_EQ(panel().x(), halfway);
    animations.moveOn(150ms);
    EXPECT_EQ(panel().x(), leftOfSecond);

    QCursor::setPos(screens[0]->geometry().center());
    stage.controls.startListening();
    stage.hotkey.pressed();
    stage.queue.runPosted();
    animations.moveOn(175ms);
    EXPECT_EQ(panel().x(), halfway);
    EXPECT_EQ(desktop.inputRegion.first().y(), 34) << "the bar has half grown";
    animations.moveOn(175ms);
    EXPECT_EQ(panel().x(), left);
    EXPECT_EQ(desktop.inputRegion.first().y(), 32);
}

TEST_F(OverlayTest, DotsFollowTheVoiceAndShimmerInTurnAfterwards) {
    click(handle());
    hear(1);
    animations.moveOn(2s);
    EXPECT_GT(std::ranges::max(dotHeights()), 15);
    hear(0);
    for (int frame = 0; frame < 40; ++frame) {
        animations.moveOn(25ms);
        EXPECT_GE(std::ranges::min(dotHeights()), 4) << "also on the way";
    }
    stage.manager.stopRecording();
    stage.queue.runPosted();
    animations.moveOn(6s); // five waves of 1.2 s
    EXPECT_NEAR(dotHeights()[0], 4 + 0.3 * 16, 0.01);
    EXPECT_GT(dotHeights()[1], dotHeights()[0] + 0.05) << "a little later";
}

TEST_F(OverlayTest, RestsWhenNothingMoves) {
    click(handle());
    stage.queue.advance(1s);
    ASSERT_TRUE(clickLeadsTo(State::transcribing, barAt(kStop)));
    stage.transcriber.complete(failed(TranscriptionError::timeout()));
    stage.queue.runPosted();
    stage.queue.advance(4s);
    int frames = 0;
    QObject::connect(&panel(), &QQuickWindow::afterFrameEnd, &panel(), [&] { ++frames; });
    EXPECT_TRUE(testing::waitUntil([&] {
        animations.moveOn(25ms);
        return !animations.isRunning() && std::exchange(frames, 0) == 0;
    }));
}

TEST(OverlayPlacementTest, IsInTheMiddleAtTheFootOfWhatIsFree) {
    EXPECT_EQ(RecordingOverlayController::placement({0, 27, 1280, 740}), QRect(444, 675, 392, 92));
    EXPECT_EQ(RecordingOverlayController::placement({1280, 0, 800, 600}), QRect(1484, 508, 392, 92));
}

} // namespace

} // namespace velmo
