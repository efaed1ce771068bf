#include "support/qt_printing.h"
#include "support/wait_until.h"
#include "ui/controls/interface_setup.h"
#include "ui/floating/floating_view.h"
#include "ui/models/floating_bar.h"
#include "ui/overlay/recording_overlay_controller.h"
#include "ui/quick/accessible_tree.h"
#include "ui/quick/floating_fakes.h"
#include "ui/shown_dictation.h"

#include <QQmlEngine>
#include <QQuickItem>
#include <QTest>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace velmo {

namespace {

// Middles of the bar's controls, from its left edge.
constexpr int kCancel = 16 + 24 + 8 + 11;
constexpr int kStop = 360 - 16 - 14;

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
    click(barAt(kCancel)); // too late
    click(barAt(kStop));
    EXPECT_EQ(stage.manager.state(), State::transcribing);

    stage.transcriber.complete(Transcript{u"Hei"_s, u"no"_s});
    stage.queue.runPosted();
    stage.processor.complete(u"Hei"_s);
    stage.queue.runPosted();
    EXPECT_EQ(stage.clipboard.text(), u"Hei"_s);
    EXPECT_EQ(inputSizes(), u"72x24"_s);
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
    const auto swings = [this] { return panel().rootObject()->property("swings").toBool(); };
    EXPECT_TRUE(swings());
    setReducedMotion(engine, true);
    EXPECT_FALSE(swings());
    click(handle());
    EXPECT_TRUE(clickLeadsTo(State::idle, barAt(kCancel)));
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
    EXPECT_TRUE(testing::waitUntil(
        [&] { return std::exchange(frames, 0) == 0 && (QTest::qWait(200), frames == 0); }));
}

TEST_F(OverlayTest, NamesItsControls) {
    QAccessible::setActive(true);
    EXPECT_TRUE(testing::accessibleNames(panel()).contains(u"Start dictation"_s));
    click(handle());
    EXPECT_TRUE(testing::waitUntil([this] {
        const QSet<QString> names = testing::accessibleNames(panel());
        return names.contains(u"Cancel dictation"_s) && names.contains(u"Stop dictation"_s) &&
               !names.contains(u"Start dictation"_s);
    }));
}

TEST(OverlayPlacementTest, IsInTheMiddleAtTheFootOfWhatIsFree) {
    EXPECT_EQ(RecordingOverlayController::placement({240, 50}, {0, 27, 1280, 740}), QRect(520, 709, 240, 50));
    EXPECT_EQ(RecordingOverlayController::placement({392, 60}, {1280, 0, 800, 600}),
              QRect(1484, 532, 392, 60));
}

} // namespace

} // namespace velmo
