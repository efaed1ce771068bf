#include "desks/speech_desk.h"
#include "support/qt_printing.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace velmo {

namespace {

const QByteArray kModels =
    R"({"models":[{"name":"base","bytes":147951465,"languages":"99 languages","installed":true,"inUse":true},)"
    R"({"name":"small","bytes":487601967,"languages":"99 languages","source":"a publisher"}])";

const QByteArray kOllama =
    R"("found":[{"name":"Ollama","address":"http://127.0.0.1:11434","models":["llama3","qwen"]}]})";

} // namespace

class SpeechViewTest : public ::testing::Test, protected testing::SpeechDesk {
protected:
    void show() {
        view.setShown(true);
        settle();
    }

    [[nodiscard]] QByteArray lastWish() const {
        QByteArray wish;
        for (const auto &request : service.server.requests()) {
            if (request.method != "GET")
                wish = request.method + ' ' + request.body;
        }
        return wish;
    }

    /// Each model as "name: details", with "…" behind one on its way.
    [[nodiscard]] QStringList models() {
        QStringList rows;
        for (const SpeechModelRow &row : view.models()->rows())
            rows.append(row.name + u": "_s + row.details + (row.isArriving ? u"…"_s : QString()));
        return rows;
    }
};

TEST_F(SpeechViewTest, TellsWhatRunsAndWhatItUnderstands) {
    stage.queue.setNow(Date(1794841200s)); // 16 November 2026, 15:00 UTC
    EXPECT_TRUE(view.isAsking());
    service.runsWhisper();
    show();
    EXPECT_TRUE(view.isAnswering());
    EXPECT_EQ(view.standing() + u'|' + view.engine(), u"Running since 12:18|Whisper, model base"_s);
    EXPECT_EQ(view.understood(), u"Norwegian, Swedish, Danish, Finnish, English and 3 more"_s);
    EXPECT_EQ(view.languagesProblem(), QString());

    service.runs(R"("engine":"PocketSphinx")", R"("en")");
    stage.preferences.set(keys::selectedLanguages, u"en,no,sv"_s);
    stage.watch.noteWrite();
    stage.queue.advance(24h);
    settle();
    EXPECT_EQ(view.standing() + u'|' + view.engine() + u'|' + view.understood(),
              u"Running since Nov 16, 2026, 12:18|PocketSphinx|English"_s);
    EXPECT_EQ(view.languages()->rowCount(), 3);
    EXPECT_TRUE(
        view.languagesProblem().startsWith(u"Norwegian and Swedish are not understood by this engine. "_s));

    service.server.answer("/health", 503, R"({"error":"The engine is loading."})");
    lookAgain();
    EXPECT_FALSE(view.isAnswering() || view.isSilent());
    EXPECT_EQ(view.standing(), u"The engine is loading."_s);
    EXPECT_EQ(view.languages()->rowCount(), 0) << "nothing is known";

    service.server.react("/health", {{{}, testing::Reaction::Then::Close}});
    lookAgain();
    EXPECT_TRUE(view.isSilent());
    EXPECT_EQ(view.standing(), u"Has not answered since 15:00"_s);
    EXPECT_TRUE(view.remedy().contains(u"<b>velmo-local-service</b>"_s));
    view.setShown(false);
    EXPECT_EQ(stage.queue.pendingTimers(), 0U) << "a page nobody sees costs nothing";
}

TEST_F(SpeechViewTest, OfAServiceElsewhereItKnowsWhetherItAnswers) {
    ServiceStatusClient client(*ServiceOrigin::parse(u"https://127.0.0.1.invalid"_s), service.http);
    ServiceWatch watch(client, stage.queue);
    SpeechView elsewhere({stage.queue, stage.preferences, stage.watch, client, watch, trial, calendar});
    elsewhere.setShown(true);
    settle();
    EXPECT_TRUE(elsewhere.isSilent());
    EXPECT_EQ(elsewhere.standing(), u"The server could not be found."_s);
    EXPECT_EQ(elsewhere.remedy() + elsewhere.engine(), QString());
}

TEST_F(SpeechViewTest, GetsAndUsesModels) {
    service.runsWhisper();
    show();
    EXPECT_FALSE(view.hasModels()) << "the service knows nothing of models";
    service.server.answer("/api/models", 200, kModels + '}');
    lookAgain();
    EXPECT_EQ(models(), (QStringList{u"base: 148 MB · 99 languages"_s,
                                     u"small: 488 MB · 99 languages · a publisher"_s}));
    const std::pair<QByteArray, QString> downloads[] = {
        {R"("received":0,"bytes":487601967,"bytesPerSecond":0)", u"0.0 kB of 488 MB"_s},
        {R"("received":7601967,"bytes":487601967,"bytesPerSecond":2e6)",
         u"7.6 MB of 488 MB · 2.0 MB/s · 4 min left"_s},
        {R"("received":477601967,"bytes":487601967,"bytesPerSecond":5e5)",
         u"478 MB of 488 MB · 500 kB/s · 20 s left"_s},
    };
    for (const auto &[download, details] : downloads) {
        service.server.answer("/api/models", 200,
                              kModels + R"(,"download":{"name":"small",)" + download + "}}");
        view.getModel(u"small"_s);
        settle();
        EXPECT_EQ(models().last(), u"small: "_s + details + u"…"_s);
    }
    EXPECT_EQ(lastWish(), R"(POST {"get":"small"})");
    EXPECT_NEAR(view.models()->rows().last().arrived, 0.98, 0.001);

    service.server.answer("/api/models", 409, R"({"error":"The disk is full."})");
    view.useModel(u"base"_s);
    settle();
    EXPECT_EQ(lastWish(), R"(POST {"use":"base"})");
    EXPECT_EQ(view.modelsProblem(), u"The disk is full."_s);
    EXPECT_TRUE(view.hasModels());
    service.server.answer("/api/models", 200, kModels + R"(,"failure":"The download was cut off."})");
    view.cancelModel(u"small"_s);
    settle();
    EXPECT_EQ(view.modelsProblem(), u"The download was cut off."_s);
    EXPECT_FALSE(view.isModelArriving());
}

TEST_F(SpeechViewTest, IsNotSetBackByWhatWasAskedBefore) {
    service.runsWhisper();
    service.server.answer("/api/models", 200, kModels + '}');
    show();
    stage.queue.advance(1500ms);
    service.http.waitUntilIdle();
    stage.queue.runPosted(); // asks for the models
    service.http.waitUntilIdle();
    service.server.answer("/api/models", 200, R"({"models":[]})");
    view.getModel(u"small"_s);
    settle();
    EXPECT_FALSE(view.hasModels());
}

TEST_F(SpeechViewTest, ChoosesALanguageModel) {
    service.runsWhisper();
    service.server.answer("/api/language-model", 200, '{' + kOllama);
    show();
    EXPECT_EQ(view.languageModelNames().join(u'|'),
              u"None|llama3 by Ollama|qwen by Ollama|Another Address…"_s);
    EXPECT_EQ(view.languageModelRow(), 0);
    EXPECT_TRUE(view.languageModelNote().endsWith(u"Found on this machine: Ollama"_s));

    service.server.answer("/api/language-model", 200,
                          R"({"address":"http://127.0.0.1:11434","model":"qwen",)" + kOllama);
    view.chooseLanguageModel(2);
    settle();
    EXPECT_EQ(lastWish(), R"(PUT {"address":"http://127.0.0.1:11434","model":"qwen"})");
    EXPECT_EQ(view.languageModelRow(), 2);

    view.chooseLanguageModel(3);
    EXPECT_TRUE(view.isAddressAsked());
    EXPECT_EQ(view.languageModelRow(), 3);
    service.server.answer("/api/language-model", 400, R"({"error":"That is no address."})");
    view.useLanguageModelAt(u" x "_s, QString());
    settle();
    EXPECT_EQ(view.languageModelProblem(), u"That is no address."_s);
    EXPECT_TRUE(view.isAddressAsked()) << "to be mended";
    service.server.answer("/api/language-model", 200, R"({"address":"http://127.0.0.1:8080"})");
    view.useLanguageModelAt(u"http://127.0.0.1:8080"_s, QString());
    settle();
    EXPECT_EQ(lastWish(), R"(PUT {"address":"http://127.0.0.1:8080"})");
    EXPECT_EQ(view.languageModelNames()[view.languageModelRow()], u"http://127.0.0.1:8080"_s);
    EXPECT_EQ(view.languageModelProblem(), QString());
    view.chooseLanguageModel(0);
    settle();
    EXPECT_EQ(lastWish(), "PUT {}");
}

TEST_F(SpeechViewTest, TellsHowATrialWent) {
    trial.toggle();
    stage.queue.advance(2s);
    EXPECT_TRUE(trial.isRecording());
    trial.textArrived();
    EXPECT_EQ(trial.outcome(), QString()) << "typed, not spoken";
    trial.toggle();
    stage.queue.advance(400ms);
    stage.transcriber.complete(Transcript{u"Hei"_s, std::nullopt});
    stage.queue.runPosted();
    stage.processor.complete({u"Hei"_s});
    stage.queue.advance(20ms);
    trial.textArrived();
    EXPECT_EQ(trial.outcome(), u"The text came 0.4 s after you stopped."_s);
    stage.queue.advance(10s);
    EXPECT_FALSE(trial.hasFailed());

    stage.dictate(u""_s);
    stage.queue.advance(2s);
    trial.textArrived();
    EXPECT_TRUE(trial.outcome().startsWith(u"No text came"_s)) << "what is typed later is not it";
    stage.recorder.failure = u"No microphone"_s;
    trial.toggle();
    stage.queue.runPosted();
    EXPECT_EQ(trial.outcome(), u"Failed to start recording: No microphone"_s);
}

} // namespace velmo
