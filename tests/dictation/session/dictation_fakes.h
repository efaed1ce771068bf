#pragma once

#include "dictation/capture/recorder.h"
#include "dictation/dictation_display.h"
#include "dictation/insertion/text_insertion.h"
#include "dictation/processing/text_processing.h"
#include "platform/microphone_permission.h"
#include "platform/sound_player.h"
#include "platform/workspace.h"
#include "service/transcription/transcription.h"
#include "service/wire/session_interfaces.h"
#include "store/dictation_history.h"

#include <QStringList>
#include <vector>

// Collaborators of a dictation that do what a test says and remember what they were asked.
namespace velmo::testing {

struct FakeMicrophonePermission final : MicrophonePermission {
    Status answer = Status::Granted;
    Answer asked;

    [[nodiscard]] Status status() const override { return answer; }
    void request(Answer callback) override { asked = std::move(callback); }
};

struct FakeWorkspace final : Workspace {
    std::optional<QString> name = QStringLiteral("Writer");
    [[nodiscard]] std::optional<QString> frontmostApplicationName() const override { return name; }
    ActivationHandler activated;
    void setActivationHandler(ActivationHandler handler) override { activated = std::move(handler); }
};

struct FakeSounds final : SoundPlayer {
    std::vector<SoundCue> played;
    void play(SoundCue cue) override { played.push_back(cue); }
};

struct FakeRecorder final : Recorder, ArmedCapture {
    std::optional<QString> failure;
    bool isArmed = false;
    bool runs = false;
    QStringList deleted;

    Result<QString, RecordingFailure> startRecording() override {
        if (runs)
            return failed(RecordingFailure{QStringLiteral("Already recording")});
        if (failure)
            return failed(RecordingFailure{*failure});
        runs = true;
        return QStringLiteral("recording.wav");
    }
    std::optional<QString> stopRecording() override {
        if (!std::exchange(runs, false))
            return std::nullopt;
        return QStringLiteral("recording.wav");
    }
    void deleteRecording(const QString &path) override { deleted.append(path); }
    void press(std::chrono::nanoseconds) override { isArmed = true; }
    void drop() override { isArmed = false; }
};

struct FakeTranscriber final : Transcriber {
    int prepared = 0;
    QString followed; ///< The path; null when there is none.
    Heard heard;
    std::vector<TranscriptionSettings> uploads;
    Completion complete;

    void prepare() override { ++prepared; }
    void follow(const QString &path, const TranscriptionSettings &, Heard toTell) override {
        followed = path;
        heard = std::move(toTell);
    }
    void abandon() override { followed = QString(); }
    void transcribe(const QString &, const TranscriptionSettings &settings, Completion completion) override {
        uploads.push_back(settings);
        complete = std::move(completion);
    }
};

struct FakeTextProcessing final : TextProcessing {
    QString text;
    std::optional<QString> language;
    Completion complete;

    void process(const QString &raw, const std::optional<QString> &detected, Completion completion) override {
        text = raw;
        language = detected;
        complete = std::move(completion);
    }
};

struct FakeInsertion final : TextInsertion {
    QStringList inserted;
    void insert(const QString &text) override { inserted.append(text); }
};

struct FakeLevelMonitor final : LevelMonitor {
    bool monitors = false;
    void startMonitoring() override { monitors = true; }
    void stopMonitoring() override { monitors = false; }
};

struct FakeOverlay final : OverlayDisplay {
    std::vector<State> states;
    void update(State state) override { states.push_back(state); }
};

struct FakeHistory final : DictationHistory {
    std::vector<std::pair<QString, std::optional<double>>> entries;
    std::function<void()> adding;
    void add(const QString &text, std::optional<double> durationSeconds) override {
        if (adding)
            adding();
        entries.emplace_back(text, durationSeconds);
    }
};

struct FakeAccount final : Account, StatisticsReporter {
    bool loggedIn = true;
    std::vector<qsizetype> reported;

    [[nodiscard]] bool isLoggedIn() const override { return loggedIn; }
    void incrementStats(qsizetype words) override { reported.push_back(words); }
};

} // namespace velmo::testing
