#include "velmo_program.h"

#include <QProcess>

namespace velmo::testing {

Run VelmoProgram::run(const QStringList &arguments, const QByteArray &input) const {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("HOME"), m_home.path());
    environment.insert(QStringLiteral("XDG_CONFIG_HOME"), configPath({}));
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(QStringLiteral(VELMO_PROGRAM), arguments);
    process.write(input);
    process.closeWriteChannel();
    const bool ended = process.waitForFinished() && process.exitStatus() == QProcess::NormalExit;
    return {ended ? process.exitCode() : -1, process.readAllStandardOutput(), process.readAllStandardError()};
}

QString VelmoProgram::configPath(const QString &name) const {
    return m_home.filePath(QStringLiteral("config/") + name);
}

} // namespace velmo::testing
