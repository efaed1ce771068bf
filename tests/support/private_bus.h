#pragma once

#include "base/interface.h"

#include <QProcess>
#include <QTemporaryDir>

namespace velmo::testing {

/// A session bus of a test's own, where nothing is started by itself. While it lives it is the process's session bus.
class PrivateBus : private Unmovable {
public:
    PrivateBus();
    ~PrivateBus();

    [[nodiscard]] const QString &address() const { return m_address; }

    /// Waits until somebody owns the name; false when nobody does for long.
    [[nodiscard]] bool waitForName(const QString &name) const;

private:
    QTemporaryDir m_folder;
    QProcess m_daemon;
    QString m_address;
    QByteArray m_addressBefore;
};

} // namespace velmo::testing
