#pragma once

#include "app/command_line/velmo_program.h"
#include "base/interface.h"
#include "flow/desk.h"

namespace velmo::testing {

/// The application as people run it, at a desk. It has started when this is made; ending it is checked.
class RunningVelmo : private Unmovable {
public:
    RunningVelmo(const Desk &desk, const QString &serviceOrigin, const QString &temporaryDirectory);
    ~RunningVelmo();

    /// Waits for a log line with these words, after the ones waited for before.
    [[nodiscard]] bool says(const QByteArray &words);
    [[nodiscard]] const QByteArray &log();

    /// Has the application do something, by the command line; it must succeed.
    void command(const QString &name);

    void signal(int number) const;
    /// Ends it before it can do anything about it.
    void kill();

private:
    VelmoProgram m_program;
    std::unique_ptr<QProcess> m_process;
    QByteArray m_log;      ///< All it has said.
    qsizetype m_heard = 0; ///< Up to where it has been waited for.
};

} // namespace velmo::testing
