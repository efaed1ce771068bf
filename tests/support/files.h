#pragma once

#include <QFile>

namespace velmo::testing {

/// What the file holds; nothing when it cannot be read.
[[nodiscard]] inline QByteArray contentOf(const QString &path) {
    QFile file(path);
    return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
}

/// Makes the file or replaces what it holds.
inline void writeFile(const QString &path, const QByteArray &content = {}) {
    QFile file(path);
    if (!file.open(QFile::WriteOnly) || file.write(content) != content.size())
        qFatal("%s cannot be written", qPrintable(path));
}

/// A script that its owner may run.
inline void writeScript(const QString &path, const QByteArray &script) {
    writeFile(path, "#!/bin/sh\n" + script);
    QFile::setPermissions(path, QFile::ReadOwner | QFile::ExeOwner);
}

} // namespace velmo::testing
