#include "support/pulse_server.h"

#include "support/child_process.h"
#include "support/files.h"
#include "support/wait_until.h"

#include <QFile>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace velmo::testing {

namespace {

constexpr int kProcessLimit = 60000; // milliseconds

const QString kSound = u"sound"_s; // as the server calls it

void startInBackground(QProcess &process, const QString &program, const QStringList &arguments) {
    endWithParent(process);
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
    const QString socket = m_directory.filePath(u"socket"_s);
    const QString file = m_directory.filePath(u"script.pa"_s);
    writeFile(file, u"load-module module-native-protocol-unix auth-anonymous=1 socket=%1\n%2\n"_s
                        .arg(socket, script.join(u'\n'))
                        .toUtf8());

    // Nothing of the person's own server or configuration takes part.
    qputenv("PULSE_SERVER", "unix:" + socket.toUtf8());
    for (const char *name : {"HOME", "XDG_RUNTIME_DIR", "XDG_CONFIG_HOME", "PULSE_RUNTIME_PATH"})
        qputenv(name, m_directory.path().toUtf8());
    startInBackground(m_server, u"pulseaudio"_s,
                      {u"-n"_s, u"--daemonize=no"_s, u"--exit-idle-time=-1"_s, u"--use-pid-file=no"_s,
                       u"--realtime=no"_s, u"--high-priority=no"_s, u"-F"_s, file});
    const bool answers = waitUntil([] {
        QProcess question;
        startInBackground(question, u"pactl"_s, {u"info"_s});
        return question.waitForFinished(kProcessLimit) && question.exitCode() == 0;
    });
    EXPECT_TRUE(answers) << "the sound server does not start";
}

PulseServer::~PulseServer() {
    end(m_listener);
    end(m_server);
}

QStringList PulseServer::virtualMicrophone() {
    return {u"load-module module-null-sink sink_name=vmic rate=48000 channels=2"_s,
            u"load-module module-remap-source master=vmic.monitor source_name=mic"_s,
            u"set-default-sink vmic"_s, u"set-default-source mic"_s};
}

QString PulseServer::toneMicrophone(const QString &name) {
    return u"load-module module-sine-source source_name=%1 frequency=440"_s.arg(name);
}

void PulseServer::wakeMicrophone() {
    const QString program = u"parec"_s;
    const QStringList arguments = {u"--latency-msec=10"_s, u"--device=vmic.monitor"_s};
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
    pactl({u"upload-sample"_s, path, kSound});
}

void PulseServer::play() {
    pactl({u"play-sample"_s, kSound, u"vmic"_s});
    const QStringList streams = {u"list"_s, u"short"_s, u"sink-inputs"_s};
    EXPECT_TRUE(waitUntil([&streams] { return pactl(streams).isEmpty(); })) << "the sound does not end";
}

void PulseServer::signal(int number) {
    sendSignal(m_server.processId(), number);
}

QByteArray PulseServer::pactl(const QStringList &arguments) {
    QProcess process;
    process.start(u"pactl"_s, arguments);
    if (!process.waitForFinished(kProcessLimit) || process.exitCode() != 0)
        ADD_FAILURE() << "pactl: " << process.readAllStandardError().toStdString();
    return process.readAllStandardOutput();
}

QString speechFile(const QTemporaryDir &directory, const QString &sentence) {
    const QString path = directory.filePath(u"speech.wav"_s);
    QProcess flite;
    flite.start(u"flite"_s, {u"-voice"_s, u"rms"_s, u"-t"_s, sentence, u"-o"_s, path});
    if (!flite.waitForFinished(kProcessLimit) || flite.exitCode() != 0)
        ADD_FAILURE() << "flite is silent; it has to be installed for the tests";
    return path;
}

} // namespace velmo::testing
