#pragma once

#include <QStringList>
#include <QTemporaryDir>

namespace velmo::testing {

/// What a run of a program came to.
struct Run {
    int status; ///< -1 when it crashed or did not end.
    QByteArray output;
    QByteArray error;
};

/// The real `velmo`, with a home of its own.
class VelmoProgram {
public:
    Run run(const QStringList &arguments, const QByteArray &input = {}) const;

    /// A path in its configuration directory.
    [[nodiscard]] QString configPath(const QString &name) const;

private:
    QTemporaryDir m_home;
};

} // namespace velmo::testing
