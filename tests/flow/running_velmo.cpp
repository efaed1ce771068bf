#include "flow/running_velmo.h"

#include "support/child_process.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace velmo::testing {

namespace {

constexpr int kPatienceMs = 60000;

}

RunningVelmo::RunningVelmo(const Desk &desk, const QString &serviceOrigin,
                           const QString &temporaryDirectory) {
    const std::pair<QString, QString> environment[] = {
        {u"VELMO_SERVICE_URL"_s, serviceOrigin}, {u"DISPLAY"_s, desk.display.display()},
        {u"XDG_SESSION_TYPE"_s, u"x11"_s},       {u"DBUS_SESSION_BUS_ADDRESS"_s, desk.bus.address()},
        {u"TMPDIR"_s, temporaryDirectory},
    };
    for (const auto &[name, value] : environment)
        m_program.setEnvironment(name, value);
    const Run setUp =
        m_program.run({u"defaults"_s, u"write"_s, u"velmoOnboardingComplete"_s, u"--bool"_s, u"true"_s});
    EXPECT_EQ(setUp.status, 0);
    m_process = m_program.start({});
    EXPECT_TRUE(says("[Velmo Mac] Ready")) << m_process->readAllStandardError().toStdString();
    // Without a tray its window comes, some seconds later, and would take the focus from what the test opens next.
    const QStringList focus = {u"getwindowfocus"_s, u"getwindowname"_s};
    EXPECT_TRUE(waitUntil([&] {
        return DisplayProgram(desk.display.display(), u"xdotool"_s, focus).outputUntilEnd() == "Velmo\n";
    })) << "the main window does not come";
}

RunningVelmo::~RunningVelmo() {
    if (m_process->state() != QProcess::NotRunning) {
        m_process->terminate();
        EXPECT_TRUE(m_process->waitForFinished(kPatienceMs));
        EXPECT_EQ(m_process->exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(m_process->exitCode(), 0) << m_process->readAllStandardError().toStdString();
    }
    if (::testing::Test::HasFailure())
        ADD_FAILURE() << log().toStdString();
}

bool RunningVelmo::says(const QByteArray &words) {
    return waitUntil([&] {
        const qsizetype found = log().indexOf(words, m_heard);
        if (found < 0)
            return false;
        m_heard = found + words.size();
        return true;
    });
}

const QByteArray &RunningVelmo::log() {
    m_log += m_process->readAllStandardOutput();
    return m_log;
}

void RunningVelmo::command(const QString &name) {
    const Run run = m_program.run({name});
    EXPECT_EQ(run.status, 0) << name.toStdString() << ": " << run.error.toStdString();
}

void RunningVelmo::signal(int number) const {
    sendSignal(m_process->processId(), number);
}

void RunningVelmo::kill() {
    m_process->kill();
    m_process->waitForFinished(kPatienceMs);
}

} // namespace velmo::testing
