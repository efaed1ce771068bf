#include "app/command_line/velmo_program.h"

#include "support/child_process.h"

using namespace Qt::StringLiterals;

namespace velmo::testing {

namespace {

/// Far beyond what any command takes; a run that gets there hangs.
constexpr int kPatienceMs = 60000;

bool isLogLine(const QString &line) {
    return line.contains(QLatin1String(" [")) && line.front().unicode() > 0x7F;
}

} // namespace

QStringList Run::messages() const {
    QStringList lines = QString::fromUtf8(error).split(u'\n', Qt::SkipEmptyParts);
    lines.removeIf(isLogLine);
    return lines;
}

VelmoProgram::VelmoProgram() {
    m_environment.insert(u"HOME"_s, m_home.path());
    m_environment.insert(u"XDG_CONFIG_HOME"_s, m_home.filePath(u"config"_s));
    m_environment.insert(u"XDG_DATA_HOME"_s, m_home.filePath(u"data"_s));
    m_environment.insert(u"XDG_RUNTIME_DIR"_s, m_home.path());
    for (const char *name : {"DISPLAY", "WAYLAND_DISPLAY", "DBUS_SESSION_BUS_ADDRESS", "VELMO_SERVICE_URL"})
        m_environment.remove(QString::fromLatin1(name));
}

Run VelmoProgram::run(const QStringList &arguments, const QByteArray &input) const {
    QProcess process;
    process.setProcessEnvironment(m_environment);
    process.start(QStringLiteral(VELMO_PROGRAM), arguments);
    process.write(input);
    process.closeWriteChannel();
    Run run;
    if (process.waitForFinished(kPatienceMs) && process.exitStatus() == QProcess::NormalExit)
        run.status = process.exitCode();
    run.output = process.readAllStandardOutput();
    run.error = process.readAllStandardError();
    return run;
}

std::unique_ptr<QProcess> VelmoProgram::start(const QStringList &arguments) const {
    auto process = std::make_unique<QProcess>();
    process->setProcessEnvironment(m_environment);
    endWithParent(*process);
    process->start(QStringLiteral(VELMO_PROGRAM), arguments);
    return process;
}

} // namespace velmo::testing
