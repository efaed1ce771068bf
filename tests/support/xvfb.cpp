#include "support/xvfb.h"

#include <csignal>
#include <gtest/gtest.h>
#include <sys/prctl.h>

namespace velmo::testing {

namespace {

constexpr int kProcessLimit = 30000; // milliseconds

QProcessEnvironment environmentFor(const QString &display) {
    auto environment = QProcessEnvironment::systemEnvironment();
    for (const char *name : {"WAYLAND_DISPLAY", "XDG_SESSION_TYPE", "DBUS_SESSION_BUS_ADDRESS"})
        environment.remove(QString::fromLatin1(name));
    environment.insert(QStringLiteral("DISPLAY"), display);
    environment.insert(QStringLiteral("NO_AT_BRIDGE"), QStringLiteral("1"));
    return environment;
}

} // namespace

DisplayProgram::DisplayProgram(const QString &display, const QString &program, const QStringList &arguments) {
    m_process.setProcessEnvironment(environmentFor(display));
    m_process.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
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
    ::kill(static_cast<pid_t>(m_process.processId()), number);
}

Xvfb::Xvfb()
    : m_server({}, QStringLiteral("Xvfb"),
               {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"),
                QStringLiteral("0"), QStringLiteral("1280x800x24"), QStringLiteral("-nolisten"),
                QStringLiteral("tcp"), QStringLiteral("-noreset")}) {
    // It names its display once it answers there.
    QProcess &server = m_server.process();
    while (!server.canReadLine() && server.waitForReadyRead(kProcessLimit))
        ;
    m_display = u':' + QString::fromLatin1(server.readLine().trimmed());
    if (m_display.size() < 2)
        ADD_FAILURE() << "Xvfb does not answer";
}

void Xvfb::startWindowManager() {
    m_windowManager = start(QStringLiteral("openbox"), {QStringLiteral("--sm-disable")});
    const bool manages = waitUntil([this] {
        return start(QStringLiteral("xprop"),
                     {QStringLiteral("-root"), QStringLiteral("_NET_SUPPORTING_WM_CHECK")})
            ->outputUntilEnd()
            .contains("window id");
    });
    EXPECT_TRUE(manages) << "openbox does not answer";
}

std::unique_ptr<DisplayProgram> Xvfb::start(const QString &program, const QStringList &arguments) {
    return std::make_unique<DisplayProgram>(m_display, program, arguments);
}

} // namespace velmo::testing
