#include "app/command_line/velmo_program.h"
#include "store/history_entry.h"
#include "store/preference_keys.h"
#include "store/sqlite_preferences.h"
#include "support/scripted_server.h"
#include "support/wave_file.h"

#include <QFile>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace velmo {

namespace {

const QByteArray kTranscribe = "/api/transcribe";

class DictateTest : public ::testing::Test {
protected:
    DictateTest() { program.setEnvironment(QStringLiteral("VELMO_SERVICE_URL"), server.origin()); }

    void hears(const QByteArray &text) { server.answer(kTranscribe, 200, "{\"text\":\"" + text + "\"}"); }

    QString wave(double seconds) {
        QString path = files.filePath(QStringLiteral("%1.wav").arg(seconds));
        testing::writeSilence(path, seconds);
        return path;
    }

    QList<Entry> history() {
        const QByteArray data =
            QByteArray::fromBase64(program
                                       .run({QStringLiteral("defaults"), QStringLiteral("read"),
                                             QString(keys::transcriptionHistory)})
                                       .output);
        return decodeEntries(data).value_or(QList<Entry>());
    }

    testing::ScriptedServer server;
    testing::VelmoProgram program;
    QTemporaryDir files;
};

TEST_F(DictateTest, PrintsTheTextOfEachRecordingAndKeepsTheFile) {
    hears("god morgen");
    const QString recording = wave(4.2);
    const auto run = program.run({QStringLiteral("dictate"), recording, recording});

    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.output, "God morgen\nGod morgen\n");
    EXPECT_EQ(run.messages(), QStringList());
    EXPECT_TRUE(run.error.contains("🎙️ [Flow] Recording stopped — duration: 4.2s"))
        << run.error.toStdString();
    EXPECT_TRUE(QFile::exists(recording));
    const QList<Entry> entries = history();
    ASSERT_EQ(entries.size(), 2);
    EXPECT_NEAR(entries[0].durationSeconds.value_or(0), 4.2, 0.01);
}

TEST_F(DictateTest, UploadsAFileOfUnknownLengthWithoutADuration) {
    hears("hei");
    QFile file(files.filePath(QStringLiteral("phone.m4a")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QByteArray(2000, 'x'));
    file.close();
    const auto run = program.run({QStringLiteral("dictate"), file.fileName()});

    EXPECT_EQ(run.output, "Hei\n");
    EXPECT_TRUE(server.requests().at(0).body.contains(QByteArray(2000, 'x')));
    ASSERT_EQ(history().size(), 1);
    EXPECT_FALSE(history()[0].durationSeconds);
}

TEST_F(DictateTest, GoesOnAfterAFailureAndNamesTheFileAtFault) {
    hears("hei");
    const auto run = program.run(
        {QStringLiteral("dictate"), QStringLiteral("/nowhere.wav"), wave(1), wave(0.2), files.path()});

    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.output, "Hei\n");
    EXPECT_EQ(run.messages(),
              (QStringList{QStringLiteral("/nowhere.wav: Recording file not found"),
                           wave(0.2) + QStringLiteral(": No text"),
                           files.path() + QStringLiteral(": This is a folder, not a recording")}));
}

TEST_F(DictateTest, SaysWhyThereIsNoText) {
    struct Case {
        const char *name;
        int status;
        const char *body;
        const char *message;
    };
    for (const Case &row : {Case{"refused", 503, R"({"error":"Busy."})", "Server error 503: Busy."},
                            Case{"nothing said", 200, R"({"text":"  "})", "No text"},
                            Case{"no transcript", 200, "{}", "Invalid server response"}}) {
        SCOPED_TRACE(row.name);
        server.answer(kTranscribe, row.status, row.body);
        const auto run = program.run({QStringLiteral("dictate"), wave(1)});
        EXPECT_EQ(run.status, 1);
        EXPECT_EQ(run.output, "");
        EXPECT_EQ(run.messages(), QStringList{QString::fromUtf8(row.message)});
    }
    program.setEnvironment(QStringLiteral("VELMO_SERVICE_URL"), testing::ScriptedServer::refusingOrigin());
    EXPECT_EQ(program.run({QStringLiteral("dictate"), wave(1)}).messages(),
              QStringList{QStringLiteral("Network error: Could not connect to the server.")});
}

TEST_F(DictateTest, DoesNotWaitForTheWriterOfAPipe) {
    const QString pipe = files.filePath(QStringLiteral("pipe.wav"));
    ASSERT_EQ(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    EXPECT_EQ(program.run({QStringLiteral("dictate"), pipe}).messages(),
              QStringList{QStringLiteral("Recording too short")});
}

TEST_F(DictateTest, RefusesWordsItDoesNotKnow) {
    EXPECT_EQ(program.run({QStringLiteral("dictate")}).status, 2);
    for (const QString &option : {QStringLiteral("--loud"), QStringLiteral("-loud.wav")}) {
        const auto run = program.run({QStringLiteral("dictate"), option, wave(1)});
        EXPECT_EQ(run.status, 2);
        EXPECT_TRUE(run.messages().at(0).contains(u'\'' + option + u'\''));
    }
    EXPECT_EQ(server.requests().size(), 0U);
    EXPECT_TRUE(
        program.run({QStringLiteral("dictate"), QStringLiteral("--help")}).output.contains("FILE..."));
    program.setEnvironment(QStringLiteral("VELMO_SERVICE_URL"), QStringLiteral("http://velmo.example"));
    EXPECT_EQ(program.run({QStringLiteral("dictate"), wave(1)}).status, 2);
}

} // namespace

} // namespace velmo
