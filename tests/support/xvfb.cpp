#include "support/xvfb.h"

#include "support/child_process.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace velmo::testing {

namespace {

constexpr int kProcessLimit = 30000; // milliseconds

const QStringList kServerArguments = {
    u"-displayfd"_s, u"1"_s, u"-screen"_s, u"0"_s, u"1280x800x24"_s, u"-nolisten"_s, u"tcp"_s, u"-noreset"_s,
};

QProcessEnvironment environmentFor(const QString &display) {
    auto environment = QProcessEnvironment::systemEnvironment();
    // The sanitizer's strictest checks are for our own code, not for the libraries of what runs on the display.
    for (const char *name :
         {"WAYLAND_DISPLAY", "XDG_SESSION_TYPE", "DBUS_SESSION_BUS_ADDRESS", "ASAN_OPTIONS"})
        environment.remove(QString::fromLatin1(name));
    environment.insert(u"DISPLAY"_s, display);
    environment.insert(u"NO_AT_BRIDGE"_s, u"1"_s);
    return environment;
}

} // namespace

DisplayProgram::DisplayProgram(const QString &display, const QString &program, const QStringList &arguments) {
    m_process.setProcessEnvironment(environmentFor(display));
    endWithParent(m_process);
    m_process.setStandardErrorFile(QProcess::nullDevice());
    m_process.start(program, arguments);
    if (!m_process.waitForStarted(kProcessLimit))
        ADD_FAILURE() << program.toStdString() << " cannot be started; it has to be installed for the tests";
}

DisplayProgram::~DisplayProgram() {
    m_process.kill();
    m_process.waitForFinished(kProcessLimit);
}

void DisplayProgram::write(const QByteArray &input) {
    m_process.write(input);
    m_process.closeWriteChannel();
}

QByteArray DisplayProgram::outputUntilEnd() {
    if (m_process.state() != QProcess::NotRunning && !m_process.waitForFinished(kProcessLimit))
        ADD_FAILURE() << m_process.program().toStdString() << " does not end";
    return m_process.readAllStandardOutput();
}

void DisplayProgram::signal(int number) const {
    sendSignal(m_process.processId(), number);
}

Xvfb::Xvfb(const QStringList &moreArguments) : m_server({}, u"Xvfb"_s, kServerArguments + moreArguments) {
    // It names its display once it answers there.
    QProcess &server = m_server.process();
    while (!server.canReadLine() && server.waitForReadyRead(kProcessLimit))
        ;
    m_display = u':' + QString::fromLatin1(server.readLine().trimmed());
    if (m_display.size() < 2)
        ADD_FAILURE() << "Xvfb does not answer";
}

Xvfb::~Xvfb() {
    // A server that is killed leaves its lock behind, and two others that start may both take it over.
    m_windowManager.reset();
    m_server.process().terminate();
    m_server.process().waitForFinished(kProcessLimit);
}

void Xvfb::startWindowManager() {
    // Windows that appear while it is still starting are never shown. It runs the command once it has started.
    m_windowManager = start(u"openbox"_s, {u"--sm-disable"_s, u"--startup"_s,
                                           u"xprop -root -f HAS_STARTED 8s -set HAS_STARTED yes"_s});
    const bool manages = waitUntil([this] {
        return start(u"xprop"_s, {u"-root"_s, u"HAS_STARTED"_s})->outputUntilEnd().contains("yes");
    });
    EXPECT_TRUE(manages) << "openbox does not answer";
}

std::unique_ptr<DisplayProgram> Xvfb::start(const QString &program, const QStringList &arguments) {
    return std::make_unique<DisplayProgram>(m_display, program, arguments);
}

} // namespace velmo::testing
