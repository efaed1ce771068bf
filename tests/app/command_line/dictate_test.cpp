#include "app/command_line/velmo_program.h"
#include "store/history_entry.h"
#include "store/preference_keys.h"
#include "store/sqlite_preferences.h"
#include "support/files.h"
#include "support/scripted_server.h"
#include "support/wave_file.h"

#include <QFile>
#include <gtest/gtest.h>
#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

const QByteArray kTranscribe = "/api/transcribe";

class DictateTest : public ::testing::Test {
protected:
    DictateTest() { program.setEnvironment(u"VELMO_SERVICE_URL"_s, server.origin()); }

    void hears(const QByteArray &text) { server.answer(kTranscribe, 200, "{\"text\":\"" + text + "\"}"); }

    QString wave(double seconds) {
        QString path = files.filePath(u"%1.wav"_s.arg(seconds));
        testing::writeSilence(path, seconds);
        return path;
    }

    QList<Entry> history() {
        const QByteArray data = QByteArray::fromBase64(
            program.run({u"defaults"_s, u"read"_s, QString(keys::transcriptionHistory)}).output);
        return decodeEntries(data).value_or(QList<Entry>());
    }

    testing::ScriptedServer server;
    testing::VelmoProgram program;
    QTemporaryDir files;
};

TEST_F(DictateTest, PrintsTheTextOfEachRecordingAndKeepsTheFile) {
    hears("god morgen");
    const QString recording = wave(4.2);
    const auto run = program.run({u"dictate"_s, recording, recording});

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
    const QString file = files.filePath(u"phone.m4a"_s);
    testing::writeFile(file, QByteArray(2000, 'x'));
    const auto run = program.run({u"dictate"_s, file});

    EXPECT_EQ(run.output, "Hei\n");
    EXPECT_TRUE(server.requests().back().body.contains(QByteArray(2000, 'x')));
    ASSERT_EQ(history().size(), 1);
    EXPECT_FALSE(history()[0].durationSeconds);
}

TEST_F(DictateTest, GoesOnAfterAFailureAndNamesTheFileAtFault) {
    hears("hei");
    const auto run = program.run({u"dictate"_s, u"/nowhere.wav"_s, wave(1), wave(0.2), files.path()});

    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.output, "Hei\n");
    EXPECT_EQ(run.messages(),
              (QStringList{u"/nowhere.wav: Recording file not found"_s, wave(0.2) + u": No text"_s,
                           files.path() + u": This is a folder, not a recording"_s}));
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
        const auto run = program.run({u"dictate"_s, wave(1)});
        EXPECT_EQ(run.status, 1);
        EXPECT_EQ(run.output, "");
        EXPECT_EQ(run.messages(), QStringList{QString::fromUtf8(row.message)});
    }
    program.setEnvironment(u"VELMO_SERVICE_URL"_s, testing::ScriptedServer::refusingOrigin());
    EXPECT_EQ(program.run({u"dictate"_s, wave(1)}).messages(),
              QStringList{u"Network error: Could not connect to the server."_s});
}

TEST_F(DictateTest, DoesNotWaitForTheWriterOfAPipe) {
    const QString pipe = files.filePath(u"pipe.wav"_s);
    ASSERT_EQ(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    EXPECT_EQ(program.run({u"dictate"_s, pipe}).messages(), QStringList{u"Recording too short"_s});
}

TEST_F(DictateTest, RefusesWordsItDoesNotKnow) {
    EXPECT_EQ(program.run({u"dictate"_s}).status, 2);
    for (const QString &option : {u"--loud"_s, u"-loud.wav"_s}) {
        const auto run = program.run({u"dictate"_s, option, wave(1)});
        EXPECT_EQ(run.status, 2);
        EXPECT_TRUE(run.messages().at(0).contains(u'\'' + option + u'\''));
    }
    EXPECT_EQ(server.requests().size(), 0U);
    EXPECT_TRUE(program.run({u"dictate"_s, u"--help"_s}).output.contains("FILE..."));
    program.setEnvironment(u"VELMO_SERVICE_URL"_s, u"http://velmo.example"_s);
    EXPECT_EQ(program.run({u"dictate"_s, wave(1)}).status, 2);
}

} // namespace

} // namespace velmo
