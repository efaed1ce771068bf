#pragma once

#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>
#include <memory>

namespace velmo::testing {

/// What a run of a program came to.
struct Run {
    int status = -1; ///< -1 when it crashed or did not end.
    QByteArray output;
    QByteArray error;

    /// The lines on standard error that are no log lines.
    [[nodiscard]] QStringList messages() const;
};

/// The real `velmo`, with a home of its own and neither display nor bus, which no command needs.
class VelmoProgram {
public:
    VelmoProgram();

    void setEnvironment(const QString &name, const QString &value) { m_environment.insert(name, value); }

    [[nodiscard]] Run run(const QStringList &arguments, const QByteArray &input = {}) const;

    /// Starts it and goes on; it is killed with what is returned, and when the test itself is.
    [[nodiscard]] std::unique_ptr<QProcess> start(const QStringList &arguments) const;

    /// A path in its configuration directory.
    [[nodiscard]] QString configPath(const QString &name) const {
        return m_home.filePath(QStringLiteral("config/") + name);
    }

private:
    QTemporaryDir m_home;
    QProcessEnvironment m_environment = QProcessEnvironment::systemEnvironment();
};

} // namespace velmo::testing
