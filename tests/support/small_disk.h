#pragma once

#include "base/interface.h"

#include <QString>
#include <QTemporaryDir>

namespace velmo::testing {

/// A real file system of some hundred kilobytes that a test can fill and make read-only. Only this process sees it,
/// and it ends with the process at the latest. Make it before the test starts threads of its own.
class SmallDisk : private Unmovable {
public:
    SmallDisk();
    ~SmallDisk();

    /// Whether this process may mount, as root or in a user namespace of its own.
    [[nodiscard]] bool isMounted() const { return m_mounted; }

    [[nodiscard]] QString path(const QString &name) const { return m_directory.filePath(name); }

    /// Takes all the room there is, and gives it back.
    void fill() const;
    void empty() const;

    void setReadOnly(bool readOnly) const;

private:
    QTemporaryDir m_directory;
    bool m_mounted = false;
};

} // namespace velmo::testing
