#include "dictation/session/dictation_controls.h"

#include "dictation/session/dictation_stage.h"
#include "store/preference_keys.h"
#include "support/log_capture.h"

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace velmo {

namespace {

struct Way {
    const char *name;
    std::function<void()> go;
};

class DictationControlsTest : public ::testing::Test {
protected:
    DictationControlsTest() {
        stage.controls.startListening();
        log.clear();
    }

    void tap() {
        stage.listener.fnDown(stage.queue.uptime());
        stage.listener.fnUp(stage.queue.uptime());
    }
    void doubleTap() {
        tap();
        stage.queue.advance(100ms);
        tap();
    }
    void pressHotkey() { stage.hotkey.pressed(); }
    void lock(bool locked) {
        stage.lock.locked = locked;
        if (locked)
            stage.lock.onLocked();
    }

    /// Lets the dictation under way, if any, come to nothing.
    void finish() {
        stage.queue.runPosted();
        if (stage.manager.state() == State::transcribing)
            stage.transcriber.complete(failed(TranscriptionError::timeout()));
        stage.queue.runPosted();
    }

    /// Notes how a start was answered.
    DictationControls::Answer noting() {
        return [this](const DictationControls::Outcome &outcome) {
            answers.append(outcome ? u"runs"_s : outcome.error());
        };
    }

    testing::LogCapture log;
    testing::DictationStage stage;
    QStringList answers;
};

TEST_F(DictationControlsTest, StopARecordingByTriggerAndHotKeyHoweverItBegan) {
    const Way begins[] = {
        {"mouse", [this] { stage.manager.startRecording(); }},
        {"start", [this] { stage.controls.start(noting()); }},
        {"toggle", [this] { stage.controls.toggle(noting()); }},
        {"hot key", [this] { pressHotkey(); }},
        {"double tap", [this] { doubleTap(); }},
        {"two starts in one turn",
         [this] { stage.manager.startRecording(), stage.controls.start(noting()); }},
        {"mouse, then another start",
         [this] { stage.manager.startRecording(), stage.queue.runPosted(), stage.manager.startRecording(); }},
    };
    const Way stops[] = {{"tap", [this] { tap(); }},
                         {"hot key", [this] { pressHotkey(); }},
                         {"toggle", [this] { stage.controls.toggle(noting()); }}};
    for (const Way &begin : begins) {
        for (const Way &stop : stops) {
            SCOPED_TRACE(::testing::Message() << begin.name << " - " << stop.name);
            begin.go();
            stage.queue.advance(1s);
            EXPECT_EQ(stage.manager.state(), State::recording);
            stop.go();
            stage.queue.runPosted();
            EXPECT_EQ(stage.manager.state(), State::transcribing);
            finish();
        }
    }
}

TEST_F(DictationControlsTest, BeginAtTheNextPressHoweverTheLastRecordingEnded) {
    const Way ends[] = {{"cancelled", [this] { stage.manager.cancelRecording(); }},
                        {"stopped", [this] { EXPECT_TRUE(stage.controls.stop()); }},
                        {"microphone lost", [this] { stage.recorder.onMicrophoneLost(); }},
                        {"session locked", [this] { lock(true), lock(false); }}};
    for (const Way &end : ends) {
        SCOPED_TRACE(end.name);
        pressHotkey();
        stage.queue.advance(1s);
        ASSERT_EQ(stage.manager.state(), State::recording);
        end.go();
        stage.queue.runPosted();
        EXPECT_NE(stage.manager.state(), State::recording);
        EXPECT_EQ(stage.listener.recordingMode(), RecordingMode::none);
        if (stage.manager.state() == State::transcribing) {
            pressHotkey(); // refused: the last dictation is not done
            stage.queue.runPosted();
            EXPECT_EQ(stage.listener.recordingMode(), RecordingMode::none);
        }
        finish();
    }
    stage.recorder.failure = u"No microphone found."_s;
    pressHotkey();
    stage.queue.runPosted();
    EXPECT_EQ(stage.listener.recordingMode(), RecordingMode::none);
}

TEST_F(DictationControlsTest, BeginNothingBehindALock) {
    lock(true);
    pressHotkey();
    doubleTap();
    stage.queue.advance(1s);
    EXPECT_EQ(stage.manager.state(), State::idle);
    EXPECT_FALSE(stage.recorder.isArmed);
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST_F(DictationControlsTest, ListenFromThePressOfTheTriggerOn) {
    stage.listener.fnDown(stage.queue.uptime());
    EXPECT_TRUE(stage.recorder.isArmed);
    stage.listener.combinationUsed();
    EXPECT_FALSE(stage.recorder.isArmed);
}

TEST_F(DictationControlsTest, WatchTheKeyThatWasChosenLast) {
    stage.preferences.set(keys::triggerKey, u"FK13"_s);
    stage.watch.noteWrite(); // by whichever process
    stage.queue.runPosted();
    EXPECT_EQ(stage.tap.key, u"FK13"_s);
}

TEST_F(DictationControlsTest, AnswerOnceItIsKnownWhetherTheRecordingRuns) {
    stage.controls.start(noting());
    stage.controls.start(noting());
    EXPECT_THAT(answers, IsEmpty());
    stage.queue.advance(1s);
    stage.controls.start(noting());
    EXPECT_TRUE(stage.controls.stop());
    stage.queue.runPosted();
    EXPECT_EQ(stage.controls.stop(), failed(u"No recording runs."_s));
    EXPECT_EQ(stage.controls.cancel(), failed(u"No recording runs."_s));
    stage.controls.toggle(noting());
    finish();
    stage.recorder.failure = u"gone"_s;
    stage.controls.toggle(noting());
    stage.queue.runPosted();
    const QString underWay = u"A dictation is under way already."_s;
    EXPECT_THAT(answers,
                ElementsAre(u"runs"_s, u"runs"_s, underWay, underWay, u"Failed to start recording: gone"_s));

    stage.recorder.failure.reset();
    stage.controls.start(noting());
    stage.queue.runPosted();
    EXPECT_TRUE(stage.controls.cancel());
    stage.queue.runPosted();
    EXPECT_EQ(stage.controls.state(), State::idle);
}

} // namespace

} // namespace velmo
