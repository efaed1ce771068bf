#include "dictation/session/recording_manager.h"

#include "dictation/session/dictation_fakes.h"
#include "store/memory_preferences.h"
#include "store/preference_keys.h"
#include "support/log_capture.h"
#include "support/manual_main_queue.h"

#include <gmock/gmock.h>
#include <thread>

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

namespace velmo {

namespace {

QString words(std::initializer_list<const char *> list) {
    QStringList objects;
    for (const char *word : list)
        objects.append(QStringLiteral(R"({"word":"%1"})").arg(QString::fromUtf8(word)));
    return u"[%1]"_s.arg(objects.join(u','));
}

class RecordingManagerTest : public ::testing::Test {
protected:
    RecordingManagerTest() { create(); }

    void create() {
        manager = std::make_unique<RecordingManager>(RecordingManager::Collaborators{
            queue, preferences, microphone, workspace, sounds, recorder, transcriber, processor, insertion,
            levels, overlay, history, account, account});
        manager->onStateChange = [this](State state) {
            EXPECT_EQ(overlay.states.size(), announced.size()) << "the overlay hears of it later";
            announced.push_back(state);
        };
        QObject::connect(manager.get(), &RecordingManager::errorMessageChanged, [this] { ++errorChanges; });
    }

    void record(std::chrono::milliseconds duration) {
        manager->startRecording();
        queue.runPosted();
        queue.advance(duration);
        manager->stopRecording();
        queue.runPosted();
    }

    void transcript(const char *text, std::optional<QString> language = std::nullopt) {
        transcriber.complete(Transcript{QString::fromUtf8(text), std::move(language)});
        queue.runPosted();
    }

    void processed(const char *text) {
        processor.complete({QString::fromUtf8(text)});
        queue.runPosted();
    }

    testing::LogCapture log;
    testing::ManualMainQueue queue;
    MemoryPreferences preferences;
    testing::FakeMicrophonePermission microphone;
    testing::FakeWorkspace workspace;
    testing::FakeSounds sounds;
    testing::FakeRecorder recorder;
    testing::FakeTranscriber transcriber;
    testing::FakeTextProcessing processor;
    testing::FakeInsertion insertion;
    testing::FakeLevelMonitor levels;
    testing::FakeOverlay overlay;
    testing::FakeHistory history;
    testing::FakeAccount account;
    std::vector<State> announced;
    int errorChanges = 0;
    std::unique_ptr<RecordingManager> manager;
};

TEST_F(RecordingManagerTest, TakesADictationFromStartToInsertedText) {
    record(4200ms);
    EXPECT_EQ(transcriber.followed, u"recording.wav"_s);
    EXPECT_EQ(manager->state(), State::transcribing);
    queue.advance(1500ms);
    transcript(" \n hei  på\ndeg ", u"no"_s);
    EXPECT_EQ(processor.text, u"hei  på\ndeg"_s);
    EXPECT_EQ(processor.language, u"no"_s);
    queue.advance(20ms);
    history.adding = [this] { EXPECT_THAT(insertion.inserted, SizeIs(1)) << "the person waits for it"; };
    processed("Hei  på\ndeg");

    EXPECT_EQ(log.lines(),
              (QStringList{
                  u"🎙️ [Flow] Recording started"_s,
                  u"🎙️ [Flow] Recording stopped — duration: 4.2s"_s,
                  u"⏱️ [Latency] Upload starting (+0ms after stop)"_s,
                  u"⏱️ [Latency] Whisper complete (+1500ms after stop)"_s,
                  u"🎙️ [Flow] Server returned text (15 chars, lang: no): \" \\n hei  på\\ndeg \""_s,
                  u"⏱️ [Latency] Post-processing starting (+1500ms after stop)"_s,
                  u"⏱️ [Latency] Post-processing complete (+1520ms after stop, processing took 20ms)"_s,
                  u"🎙️ [Flow] Processed text (11 chars): \"Hei  på\\ndeg\""_s,
                  u"🎙️ [Flow] ✅ Text inserted + stats updated — TOTAL: 1520ms"_s,
              }));
    EXPECT_EQ(insertion.inserted, QStringList{u"Hei  på\ndeg"_s});
    EXPECT_EQ(manager->lastTranscription(), u"Hei  på\ndeg"_s);
    ASSERT_THAT(history.entries, SizeIs(1));
    EXPECT_DOUBLE_EQ(history.entries[0].second.value(), 4.2); // the recording's length, not the latency
    EXPECT_THAT(account.reported, ElementsAre(2));
    EXPECT_THAT(sounds.played, ElementsAre(SoundCue::Tink, SoundCue::Pop));
    EXPECT_THAT(announced, ElementsAre(State::recording, State::transcribing, State::idle));
    EXPECT_EQ(overlay.states, announced);
    EXPECT_EQ(recorder.deleted, QStringList{u"recording.wav"_s});
    EXPECT_EQ(manager->state(), State::idle);
}

TEST_F(RecordingManagerTest, AppliesStateChangesOneTurnLaterAndOnlyRecordingShowsLevels) {
    manager->startRecording();
    EXPECT_EQ(manager->state(), State::idle);
    manager->startRecording(); // still sees idle: the recorder refuses
    queue.runPosted();
    EXPECT_EQ(manager->state(), State::recording);
    EXPECT_TRUE(levels.monitors);
    EXPECT_EQ(manager->errorMessage(), u"Failed to start recording: Already recording"_s);
    EXPECT_EQ(log.lines().last(), u"🎙️ [Flow] Failed to start recording: Already recording"_s);
    EXPECT_THAT(sounds.played, ElementsAre(SoundCue::Tink));

    queue.advance(1s);
    manager->stopRecording();
    EXPECT_TRUE(levels.monitors);
    queue.runPosted();
    EXPECT_FALSE(levels.monitors);
    transcript("hei");
    EXPECT_TRUE(manager->errorMessage().isNull()) << "there is a text after all";
}

TEST_F(RecordingManagerTest, ShowsTheWordsOfTheRunningRecordingAlone) {
    manager->startRecording();
    queue.runPosted();
    const auto heard = transcriber.heard;
    heard(u"Hei på"_s);
    EXPECT_EQ(manager->liveText(), QString()) << "they come on another thread";
    queue.runPosted();
    EXPECT_EQ(manager->liveText(), u"Hei på"_s);
    manager->cancelRecording();
    heard(u"Hei på deg"_s);
    queue.runPosted();
    EXPECT_EQ(manager->liveText(), QString());

    preferences.set(keys::liveWords, false);
    manager->startRecording();
    EXPECT_FALSE(transcriber.heard);
}

TEST_F(RecordingManagerTest, RefusesWhatDoesNotFitTheState) {
    manager->stopRecording();
    manager->cancelRecording();
    record(1s);
    manager->startRecording();
    manager->stopRecording();
    manager->cancelRecording();
    queue.runPosted();

    EXPECT_TRUE(log.contains(u"🎙️ [Flow] Can't stop — state is idle"_s));
    EXPECT_TRUE(log.contains(u"🎙️ [Flow] Can't start — state is transcribing"_s));
    EXPECT_TRUE(log.contains(u"🎙️ [Flow] Can't stop — state is transcribing"_s));
    EXPECT_FALSE(log.contains(u"🎙️ [Flow] Recording cancelled by user"_s));
    EXPECT_EQ(manager->state(), State::transcribing);
    EXPECT_THAT(transcriber.uploads, SizeIs(1));
}

TEST_F(RecordingManagerTest, AsksForTheMicrophoneAndRunsTheAnswerOnTheMainQueue) {
    const QString denied = u"Microphone access denied. Check System Settings > Privacy > Microphone."_s;
    microphone.answer = MicrophonePermission::Status::NotAsked;
    manager->startRecording();
    std::thread([&] { microphone.asked(false); }).join();
    EXPECT_TRUE(manager->errorMessage().isNull());
    queue.runPosted();
    EXPECT_EQ(manager->errorMessage(), denied);

    manager->startRecording();
    microphone.asked(true);
    queue.runPosted();
    EXPECT_EQ(manager->state(), State::recording);
    EXPECT_TRUE(manager->errorMessage().isNull());
    manager->cancelRecording();
    queue.runPosted();

    for (const auto refused :
         {MicrophonePermission::Status::Restricted, MicrophonePermission::Status::Denied}) {
        microphone.answer = refused;
        manager->startRecording();
        queue.runPosted();
        EXPECT_EQ(manager->errorMessage(), denied);
        EXPECT_EQ(manager->state(), State::idle);
    }
}

TEST_F(RecordingManagerTest, NamesTheApplicationThatHasFocus) {
    const std::pair<std::optional<QString>, QString> rows[] = {
        {u"Writer"_s, u"Writer"_s}, {QString(), u"App"_s}, {std::nullopt, u"App"_s}};
    for (const auto &[name, expected] : rows) {
        workspace.name = name;
        record(1s);
        EXPECT_EQ(manager->activeAppName(), expected);
        transcript("");
    }
}

TEST_F(RecordingManagerTest, DiscardsRecordingsUnderThreeTenthsOfASecond) {
    record(299ms);
    EXPECT_TRUE(log.contains(u"🎙️ [Flow] Recording stopped — duration: 0.3s"_s));
    EXPECT_TRUE(log.contains(u"🎙️ [Flow] Recording too short, discarding"_s));
    EXPECT_EQ(transcriber.followed, QString());
    EXPECT_THAT(sounds.played, ElementsAre(SoundCue::Tink, SoundCue::Pop));
    EXPECT_EQ(recorder.deleted, QStringList{u"recording.wav"_s});
    EXPECT_EQ(manager->state(), State::idle);
    EXPECT_THAT(transcriber.uploads, IsEmpty());

    record(300ms);
    EXPECT_EQ(manager->state(), State::transcribing);
    EXPECT_THAT(transcriber.uploads, SizeIs(1));
}

TEST_F(RecordingManagerTest, EndsWhenTheRecorderHadNothing) {
    const std::pair<void (RecordingManager::*)(), QString> ends[] = {
        {&RecordingManager::stopRecording, u"No recording to stop"_s},
        {&RecordingManager::cancelRecording, u"Recording cancelled by user"_s},
    };
    for (const auto &[end, line] : ends) {
        manager->startRecording();
        queue.runPosted();
        recorder.runs = false;
        (manager.get()->*end)();
        queue.runPosted();
        EXPECT_EQ(log.lines().last(), u"🎙️ [Flow] "_s + line);
        EXPECT_EQ(manager->state(), State::idle);
        EXPECT_THAT(recorder.deleted, IsEmpty());
        EXPECT_EQ(transcriber.followed, QString());
    }
}

TEST_F(RecordingManagerTest, ThrowsACancelledRecordingAway) {
    manager->startRecording();
    queue.runPosted();
    manager->cancelRecording();
    queue.runPosted();

    EXPECT_EQ(log.lines().last(), u"🎙️ [Flow] Recording cancelled by user"_s);
    EXPECT_EQ(transcriber.followed, QString());
    EXPECT_THAT(sounds.played, ElementsAre(SoundCue::Tink, SoundCue::Funk));
    EXPECT_EQ(recorder.deleted, QStringList{u"recording.wav"_s});
    EXPECT_EQ(manager->state(), State::idle);
    EXPECT_EQ(queue.pendingTimers(), 0U);
}

TEST_F(RecordingManagerTest, ShowsWhyTheUploadFailedUntilTheNextRecording) {
    record(1s);
    transcriber.complete(failed(TranscriptionError::serverError(502, std::nullopt)));
    queue.runPosted();

    EXPECT_EQ(log.lines().last(),
              u"🎙️ [Flow] ❌ EXIT: Transcription failed: Server error 502: unknown"_s);
    EXPECT_EQ(manager->errorMessage(), u"Server error 502: unknown"_s);
    EXPECT_EQ(manager->state(), State::idle);
    EXPECT_THAT(recorder.deleted, SizeIs(1));

    queue.advance(1h);
    EXPECT_EQ(manager->errorMessage(), u"Server error 502: unknown"_s);
    manager->startRecording();
    EXPECT_TRUE(manager->errorMessage().isNull());
}

TEST_F(RecordingManagerTest, LeavesTheMessageAloneWhenNothingWasSaid) {
    record(1s);
    transcript(" \t\n\u2029");
    EXPECT_EQ(log.lines().last(), u"🎙️ [Flow] ❌ EXIT: Empty transcription"_s);
    EXPECT_EQ(manager->state(), State::idle);
    EXPECT_EQ(errorChanges, 0);

    record(1s);
    transcript("Thanks for watching.");
    processed("");
    EXPECT_EQ(log.lines().last(), u"🎙️ [Flow] ❌ EXIT: Empty transcription"_s);
    EXPECT_EQ(manager->state(), State::idle);
    EXPECT_THAT(insertion.inserted, IsEmpty());
    EXPECT_THAT(history.entries, IsEmpty());
    EXPECT_EQ(errorChanges, 0);
}

TEST_F(RecordingManagerTest, RefusesAnEchoOfTheHintsRawAndProcessed) {
    preferences.set(keys::dictionary, words({"Grafana", "Kubernetes", "Oslo"}));
    record(1s);
    transcript("fine words");
    processed("fine words");
    EXPECT_FALSE(manager->lastTranscription().isNull());

    record(1s);
    transcript("Grafana Kubernetes");
    EXPECT_EQ(log.lines().last(), u"🎙️ [Flow] ❌ EXIT: Hallucination detected (raw), discarding"_s);
    EXPECT_TRUE(manager->lastTranscription().isNull());
    EXPECT_EQ(manager->errorMessage(), u"No speech detected"_s);
    EXPECT_EQ(manager->state(), State::idle);

    queue.advance(1999ms);
    EXPECT_EQ(manager->errorMessage(), u"No speech detected"_s);
    queue.advance(1ms);
    EXPECT_TRUE(manager->errorMessage().isNull());

    record(1s);
    transcript("graf ana");
    processed("Grafana Kubernetes");
    EXPECT_EQ(log.lines().last(),
              u"🎙️ [Flow] ❌ EXIT: Hallucination detected (processed), discarding"_s);
    EXPECT_EQ(manager->errorMessage(), u"No speech detected"_s);
    EXPECT_THAT(insertion.inserted, SizeIs(1));

    // Another message in between is not cleared with it.
    recorder.failure = u"gone"_s;
    manager->startRecording();
    queue.advance(3s);
    EXPECT_EQ(manager->errorMessage(), u"Failed to start recording: gone"_s);
}

TEST_F(RecordingManagerTest, CountsNothingForNobody) {
    account.loggedIn = false;
    record(1s);
    transcript("hei");
    processed("Hei");
    EXPECT_THAT(history.entries, SizeIs(1));
    EXPECT_THAT(account.reported, IsEmpty());
}

TEST_F(RecordingManagerTest, ReadsLanguagesAndHintsAfreshForEveryDictation) {
    record(1s);
    EXPECT_EQ(transcriber.uploads[0], (TranscriptionSettings{u"no"_s, u"no,sv,da,fi,en"_s, std::nullopt}));
    transcript("");

    preferences.set(keys::primaryLanguage, u"sv"_s);
    preferences.set(keys::selectedLanguages, u" sv ,,no"_s);
    preferences.set(keys::dictionary, words({"c", "b", "a"}));
    record(1s);
    EXPECT_EQ(transcriber.uploads[1], (TranscriptionSettings{u"sv"_s, u" sv ,,no"_s, u"a, b, c"_s}));
    EXPECT_TRUE(log.contains(u"🎙️ [Prompt] 3 hint words for languages: sv, , no"_s));
}

TEST_F(RecordingManagerTest, KeepsTheServiceWarmWhileALongRecordingRuns) {
    manager->startRecording();
    queue.advance(60s);
    EXPECT_EQ(transcriber.prepared, 3);
    manager->stopRecording();
    queue.advance(60s);
    EXPECT_EQ(transcriber.prepared, 3);
}

TEST_F(RecordingManagerTest, DeferredStepsDoNothingOnceItIsGone) {
    microphone.answer = MicrophonePermission::Status::NotAsked;
    manager->startRecording();
    manager.reset();
    microphone.asked(true);
    queue.runPosted();
    EXPECT_FALSE(recorder.runs);

    microphone.answer = MicrophonePermission::Status::Granted;
    create();
    record(1s);
    log.clear();
    std::thread([&] { transcriber.complete(Transcript{u"hei"_s, std::nullopt}); }).join();
    manager.reset(); // before the answer has got to the main thread
    queue.advance(10s);
    EXPECT_THAT(log.lines(), IsEmpty());
    EXPECT_THAT(recorder.deleted, IsEmpty());

    create();
    record(1s);
    transcript("hei");
    manager.reset();
    log.clear();
    processor.complete({u"Hei"_s});
    queue.runPosted();
    EXPECT_THAT(log.lines(), IsEmpty());
    EXPECT_THAT(insertion.inserted, IsEmpty());
}

TEST_F(RecordingManagerTest, TakesAnswersFromOtherThreads) {
    record(1s);
    std::thread([&] { transcriber.complete(Transcript{u"å"_s.repeated(81), std::nullopt}); }).join();
    queue.runPosted();
    EXPECT_TRUE(log.contains(
        u"🎙️ [Flow] Server returned text (81 chars, lang: nil): \"%1\""_s.arg(u"å"_s.repeated(80))));
    std::thread([&] { processor.complete({u"Hei"_s}); }).join();
    EXPECT_THAT(insertion.inserted, IsEmpty());
    queue.runPosted();
    EXPECT_EQ(insertion.inserted, QStringList{u"Hei"_s});
}

} // namespace

} // namespace velmo
