#include "localservice/http/raw_connection.h"
#include "localservice/speech/spoken.h"
#include "localservice/speech/upload_form.h"

#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <csignal>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace velmo::localservice {

using testing::RawConnection;

namespace {

/// The program itself.
class Program {
public:
    explicit Program(const QStringList &arguments) {
        m_process.start(QStringLiteral(VELMO_LOCAL_SERVICE_PROGRAM), arguments);
    }

    /// The port of the line that says the service is ready.
    int waitUntilReady() {
        while (!m_process.canReadLine() && m_process.waitForReadyRead(60'000)) {
        }
        static const QRegularExpression address(u"ready on http://127\\.0\\.0\\.1:(\\d+) "_s);
        return address.match(QString::fromUtf8(m_process.readLine())).captured(1).toInt();
    }

    void signal(int number) const { ::kill(static_cast<pid_t>(m_process.processId()), number); }

    /// The exit status; -1 when a signal ended it.
    int exitStatus() {
        EXPECT_TRUE(m_process.waitForFinished(60'000));
        return m_process.exitStatus() == QProcess::NormalExit ? m_process.exitCode() : -1;
    }

    QByteArray errors() { return m_process.readAllStandardError(); }

private:
    QProcess m_process;
};

QStringList words(const char *text) {
    return QString::fromLatin1(text).split(u' ', Qt::SkipEmptyParts);
}

} // namespace

TEST(Program, EndsGracefully) {
    const QTemporaryDir data;
    Program program({u"--port"_s, u"0"_s, u"--data-dir"_s, data.path()});
    const int port = program.waitUntilReady();
    ASSERT_NE(port, 0) << program.errors().constData();
    RawConnection connection(port);
    const auto form = testing::uploadForm(testing::spoken(u"the secret word is giraffe"_s));
    QByteArray request =
        "POST /api/transcribe HTTP/1.1\r\nHost: localhost\r\nContent-Type: " + form.contentType +
        "\r\nContent-Length: " + QByteArray::number(form.body().size()) + "\r\n";
    for (const auto &[name, value] : testing::uploadHeaders())
        request += QByteArray::fromStdString(name + ": " + value + "\r\n");
    connection.send(request + "\r\n" + form.body());
    // Connections are taken in their order, so the first has been once this one is answered.
    RawConnection other(port);
    other.send("GET /health HTTP/1.1\r\nHost: localhost\r\n\r\n");
    EXPECT_TRUE(other.readAll().contains("\"status\":\"ok\""));

    RawConnection signingIn(port);
    signingIn.send("GET /auth/authorize?state=secret HTTP/1.1\r\nHost: localhost\r\n\r\n");
    EXPECT_TRUE(signingIn.readAll().startsWith("HTTP/1.1 400"));
    RawConnection synchronising(port);
    synchronising.send(
        "GET /api/sync/stats HTTP/1.1\r\nHost: localhost\r\nAuthorization: Bearer secret\r\n\r\n");
    EXPECT_TRUE(synchronising.readAll().startsWith("HTTP/1.1 401"));
    EXPECT_TRUE(QFile::exists(data.filePath(u"accounts.sqlite"_s)));

    program.signal(SIGTERM);

    EXPECT_TRUE(connection.readAll().contains("secret"));
    EXPECT_EQ(program.exitStatus(), 0);
    const QByteArray errors = program.errors();
    EXPECT_TRUE(errors.contains("POST /api/transcribe 200 ")) << errors.constData();
    EXPECT_TRUE(errors.contains("GET /auth/authorize 400 ")) << errors.constData();
    EXPECT_FALSE(errors.contains("secret")) << "neither words nor tokens go into the log";
}

TEST(Program, SaysThatItsPortIsTaken) {
    Program first(words("--port 0"));
    const int port = first.waitUntilReady();
    Program second({u"--port"_s, QString::number(port)});
    EXPECT_EQ(second.exitStatus(), 1);
    const QByteArray errors = second.errors();
    EXPECT_TRUE(errors.contains(QByteArray::number(port)) && errors.contains("--port")) << errors.constData();
    first.signal(SIGINT);
    EXPECT_EQ(first.exitStatus(), 0);
}

TEST(Program, NamesTheWordThatIsOff) {
    for (const char *arguments :
         {"--colour", "--port 70000", "--port x", "--host example.org", "--speech-url localhost", "serve"}) {
        Program program(words(arguments));
        EXPECT_EQ(program.exitStatus(), 2) << arguments;
        const QByteArray errors = program.errors();
        EXPECT_TRUE(errors.contains(QByteArray(arguments).split(' ').last().replace("--", "")))
            << errors.constData();
    }
}

} // namespace velmo::localservice
