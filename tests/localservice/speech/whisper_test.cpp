#include "localservice/speech/whisper/whisper_engine.h"

#include "localservice/speech/engine_pool.h"
#include "localservice/speech/spoken.h"
#include "localservice/speech/whisper/repetition.h"
#include "localservice/speech/whisper/thread_count.h"
#include "support/files.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <cmath>
#include <ctime>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <random>

using namespace Qt::StringLiterals;

namespace velmo::localservice {

namespace {

using ::testing::HasSubstr;
using testing::spoken;

/// The model that scripts/get-model gets.
QString baseModel() {
    const QString cache = QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation);
    return cache + u"/velmo/models/ggml-base.bin"_s;
}

Upload upload(const QByteArray &audio, const QStringList &languages) {
    Upload upload;
    upload.audio = audio;
    upload.language = languages.first();
    upload.languages = languages;
    return upload;
}

/// The sound of a WAVE file, without its head.
std::vector<int16_t> samplesOf(const QByteArray &wave) {
    const auto sound = decodeAudio(wave);
    return sound ? sound->samples : std::vector<int16_t>();
}

/// A WAVE file of 3 s.
QByteArray waveOf(const std::function<double(int)> &sampleAt) {
    QByteArray file = spoken(u"as long as a sentence is"_s).first(44);
    for (int index = 0; index < 3 * Sound::samplesPerSecond; ++index) {
        const auto sample = static_cast<int16_t>(std::clamp(sampleAt(index), -32000.0, 32000.0));
        file.append(reinterpret_cast<const char *>(&sample), sizeof sample);
    }
    return file;
}

class Whisper : public ::testing::Test {
protected:
    void SetUp() override {
        if (!QFile::exists(baseModel()))
            GTEST_SKIP() << "no speech model: scripts/get-model gets it";
        ASSERT_TRUE(QFile::link(baseModel(), m_model));
    }

    EnginePool &pool() {
        if (!m_pool)
            m_pool = std::make_unique<EnginePool>(whisperEngines(m_surroundings));
        return *m_pool;
    }

    SpeechOutcome transcribe(const QByteArray &audio, const QStringList &languages) {
        return pool().transcribe(upload(audio, languages));
    }

    const QTemporaryDir m_directory;
    const QString m_model = m_directory.filePath(u"ggml-base.bin"_s);
    const ModelStore m_store{m_directory.path(), {}};
    ModelSurroundings m_surroundings{[this](const QString &language) { return m_store.modelFor(language); },
                                     [] { return -1; }};
    std::unique_ptr<EnginePool> m_pool;
};

} // namespace

TEST_F(Whisper, UnderstandsASentenceInTheLanguageItIsIn) {
    const QByteArray sentence = spoken(u"The meeting will start at ten in the morning."_s);
    for (const QStringList &languages :
         {QStringList{u"en"_s}, QStringList{u"no"_s, u"sv"_s, u"da"_s, u"fi"_s, u"en"_s}}) {
        const auto outcome = transcribe(sentence, languages);
        ASSERT_TRUE(outcome) << outcome.error().sentence.toStdString();
        EXPECT_THAT(outcome->text.toStdString(), HasSubstr("The meeting will start at "));
        EXPECT_TRUE(outcome->text.endsWith(u'.'));
        EXPECT_EQ(outcome->detectedLanguage, u"en"_s);
    }
    // Too short to tell, and told another: the primary language.
    EXPECT_EQ(transcribe(spoken(u"Yes."_s), {u"sv"_s, u"en"_s})->detectedLanguage, u"sv"_s);
    EXPECT_EQ(transcribe(sentence, {u"nn"_s})->detectedLanguage, u"nn"_s);
    EXPECT_EQ(transcribe(sentence, {u"tlh"_s}).error().status, 422);
}

TEST_F(Whisper, HearsNothingWhereNobodySpeaks) {
    std::minstd_rand random;
    std::normal_distribution<double> noise;
    const std::function<double(int)> sounds[] = {
        [](int) { return 0; }, [&](int) { return 60 * noise(random); },
        [&](int) { return 6000 * noise(random); },
        [](int index) { return 9000 * std::sin(index * 0.1) * std::sin(index * 0.0003); },
        [](int index) {
            return 4000 * (std::sin(index * 0.086) + std::sin(index * 0.109) + std::sin(index * 0.130));
        }};
    for (const auto &sound : sounds) {
        for (const auto &language : {u"no"_s, u"sv"_s, u"da"_s, u"fi"_s, u"en"_s}) {
            const auto outcome = transcribe(waveOf(sound), {language});
            ASSERT_TRUE(outcome);
            EXPECT_EQ(outcome->text, QString());
            EXPECT_EQ(outcome->detectedLanguage, language);
        }
    }
}

TEST_F(Whisper, RecognisesWhileSomebodySpeaks) {
    auto session = pool().begin(upload({}, {u"en"_s}), std::make_shared<Patience>());
    ASSERT_TRUE(session);
    const std::vector<int16_t> pause(Sound::samplesPerSecond, 0);
    (*session)->append(samplesOf(
        spoken(u"The meeting will start at ten in the morning, and everybody is invited to come."_s)));
    (*session)->append(pause);
    while ((*session)->partialText().isEmpty())
        std::this_thread::yield();
    EXPECT_THAT((*session)->partialText().toStdString(), HasSubstr("The meeting"));

    (*session)->append(samplesOf(spoken(u"Please bring your own coffee."_s)));
    const auto outcome = (*session)->finish();
    ASSERT_TRUE(outcome);
    EXPECT_THAT(outcome->text.toStdString(),
                ::testing::ContainsRegex("The meeting .*invited to come\\. Please bring .*coffee\\."));
}

TEST_F(Whisper, EndsWhenNobodyWaitsAnyMore) {
    const QByteArray audio = spoken(u"one two three four five six seven "_s.repeated(40));
    const std::clock_t begun = std::clock();
    const auto outcome = pool().transcribe(upload(audio, {u"en"_s}), [] { return true; });
    EXPECT_EQ(outcome.error().status, 503);
    m_pool.reset(); // waits for what is being worked on
    // All of it takes 15 s of the processors' time, however busy others keep them.
    EXPECT_LT((std::clock() - begun) / CLOCKS_PER_SEC, 5);
}

TEST_F(Whisper, FollowsItsModelsFile) {
    LoadedModel loaded(m_surroundings);
    ASSERT_TRUE(loaded.get({}));
    const WhisperModel *first = *loaded.get({});
    EXPECT_EQ(*loaded.get({}), first);
    EXPECT_TRUE(QFile::remove(m_model));
    EXPECT_TRUE(loaded.get({}).error().sentence.contains(u"no speech model any more"));
    EXPECT_FALSE(loaded.isLoaded());

    velmo::testing::writeFile(m_model, velmo::testing::contentOf(baseModel()).first(50'000'000));
    EXPECT_TRUE(loaded.get({}).error().sentence.contains(u"cut off"));
    EXPECT_TRUE(QFile::remove(m_model));
    ASSERT_TRUE(QFile::link(baseModel(), m_model));
    EXPECT_TRUE(loaded.get({}));
}

TEST_F(Whisper, TakesMemoryOnlyWhenThereIsEnoughAndOnlyForAWhile) {
    auto now = ModelSurroundings::Clock::now();
    qint64 available = 200'000'000;
    m_surroundings.now = [&now] { return now; };
    m_surroundings.availableMemory = [&available] { return available; };
    LoadedModel loaded(m_surroundings);
    EXPECT_FALSE(loaded.restsAt());
    const auto refused = loaded.get({});
    EXPECT_EQ(refused.error().status, 503);
    EXPECT_TRUE(refused.error().sentence.contains(u"MiB are free"));

    available = 1'000'000'000;
    ASSERT_TRUE(loaded.get({}));
    now += std::chrono::minutes(9);
    ASSERT_TRUE(loaded.get({}));
    EXPECT_EQ(loaded.restsAt(), now + std::chrono::minutes(10));
    EXPECT_GT(availableMemory(), 0);

    // A pool gives it back by itself, and gets it again.
    m_surroundings = {m_surroundings.modelFor, [] { return -1; }, ModelSurroundings::Clock::now, {}};
    const QByteArray sentence = spoken(u"The meeting will start at ten."_s);
    EXPECT_TRUE(transcribe(sentence, {u"en"_s}));
    EXPECT_TRUE(transcribe(sentence, {u"en"_s}));
}

TEST(Repetition, IsFoundInTextThatGoesRoundInCircles) {
    for (const auto &text : {u"Please hold on. Please hold on. Please hold on."_s,
                             u"Press two to speak with a customer, press two to speak with a friend"_s})
        EXPECT_TRUE(repeatsItself(text)) << text.toStdString();
    for (const auto &text : {u""_s, u"No, no, no, no!"_s, u"To be or not to be, that is the question"_s,
                             u"Det er en bil, og det er en båt, men ikke et tog"_s})
        EXPECT_FALSE(repeatsItself(text)) << text.toStdString();
}

TEST(ThreadCount, LeavesOthersTheirProcessors) {
    const std::tuple<int, const char *, int> rows[] = {{1, "0.20 0.18 0.12 1/80 11206", 1},
                                                       {2, "0.20 0.18 0.12 1/80 11206", 2},
                                                       {2, "9.20 9.18 9.12 9/80 11206", 2},
                                                       {8, "0.20 0.18 0.12 1/80 11206", 8},
                                                       {8, "3.20 3.18 3.12 4/80 11206", 5},
                                                       {64, "0 0 0 1/80 1", 8},
                                                       {4, "", 4}};
    for (const auto &[processors, load, expected] : rows)
        EXPECT_EQ(threadsForWork(processors, load), expected) << processors << load;
}

} // namespace velmo::localservice
