#include "support/pulse_server.h"

#include "support/wait_until.h"

#include <QFile>
#include <csignal>
#include <gtest/gtest.h>
#include <sys/prctl.h>

namespace velmo::testing {

namespace {

constexpr int kProcessLimit = 60000; // milliseconds

const QString kSound = QStringLiteral("sound"); // as the server calls it

void startInBackground(QProcess &process, const QString &program, const QStringList &arguments) {
    process.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    process.start(program, arguments);
}

void end(QProcess &process) {
    process.kill();
    process.waitForFinished(kProcessLimit);
}

} // namespace

PulseServer::PulseServer(const QStringList &script) {
    const QString socket = m_directory.filePath(QStringLiteral("socket"));
    QFile file(m_directory.filePath(QStringLiteral("script.pa")));
    file.open(QIODevice::WriteOnly);
    file.write(QStringLiteral("load-module module-native-protocol-unix auth-anonymous=1 socket=%1\n%2\n")
                   .arg(socket, script.join(u'\n'))
                   .toUtf8());
    file.close();

    // Nothing of the person's own server or configuration takes part.
    qputenv("PULSE_SERVER", "unix:" + socket.toUtf8());
    for (const char *name : {"HOME", "XDG_RUNTIME_DIR", "XDG_CONFIG_HOME", "PULSE_RUNTIME_PATH"})
        qputenv(name, m_directory.path().toUtf8());
    startInBackground(m_server, QStringLiteral("pulseaudio"),
                      {QStringLiteral("-n"), QStringLiteral("--daemonize=no"),
                       QStringLiteral("--exit-idle-time=-1"), QStringLiteral("--use-pid-file=no"),
                       QStringLiteral("--realtime=no"), QStringLiteral("--high-priority=no"),
                       QStringLiteral("-F"), file.fileName()});
    const bool answers = waitUntil([] {
        QProcess question;
        startInBackground(question, QStringLiteral("pactl"), {QStringLiteral("info")});
        return question.waitForFinished(kProcessLimit) && question.exitCode() == 0;
    });
    EXPECT_TRUE(answers) << "the sound server does not start";
}

PulseServer::~PulseServer() {
    end(m_listener);
    end(m_server);
}

QStringList PulseServer::virtualMicrophone() {
    return {QStringLiteral("load-module module-null-sink sink_name=vmic rate=48000 channels=2"),
            QStringLiteral("load-module module-remap-source master=vmic.monitor source_name=mic"),
            QStringLiteral("set-default-sink vmic"), QStringLiteral("set-default-source mic")};
}

QString PulseServer::toneMicrophone(const QString &name) {
    return QStringLiteral("load-module module-sine-source source_name=%1 frequency=440").arg(name);
}

void PulseServer::wakeMicrophone() {
    const QString program = QStringLiteral("parec");
    const QStringList arguments = {QStringLiteral("--latency-msec=10"),
                                   QStringLiteral("--device=vmic.monitor")};
    startInBackground(m_listener, program, arguments);
    QProcess probe;
    probe.start(program, arguments);
    EXPECT_TRUE(probe.waitForReadyRead(kProcessLimit)) << "the virtual microphone is silent";
    end(probe);
}

void PulseServer::control(const QStringList &arguments) {
    pactl(arguments);
}

void PulseServer::load(const QString &path) {
    pactl({QStringLiteral("upload-sample"), path, kSound});
}

void PulseServer::play() {
    pactl({QStringLiteral("play-sample"), kSound, QStringLiteral("vmic")});
    const QStringList streams = {QStringLiteral("list"), QStringLiteral("short"),
                                 QStringLiteral("sink-inputs")};
    EXPECT_TRUE(waitUntil([&streams] { return pactl(streams).isEmpty(); })) << "the sound does not end";
}

void PulseServer::signal(int number) {
    ::kill(static_cast<pid_t>(m_server.processId()), number);
}

QByteArray PulseServer::pactl(const QStringList &arguments) {
    QProcess process;
    process.start(QStringLiteral("pactl"), arguments);
    if (!process.waitForFinished(kProcessLimit) || process.exitCode() != 0)
        ADD_FAILURE() << "pactl: " << process.readAllStandardError().toStdString();
    return process.readAllStandardOutput();
}

QString speechFile(const QTemporaryDir &directory, const QString &sentence) {
    const QString path = directory.filePath(QStringLiteral("speech.wav"));
    QProcess flite;
    flite.start(QStringLiteral("flite"), {QStringLiteral("-voice"), QStringLiteral("rms"),
                                          QStringLiteral("-t"), sentence, QStringLiteral("-o"), path});
    if (!flite.waitForFinished(kProcessLimit) || flite.exitCode() != 0)
        ADD_FAILURE() << "flite is silent; it has to be installed for the tests";
    return path;
}

} // namespace velmo::testing
