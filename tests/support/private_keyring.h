#pragma once

#include "base/interface.h"
#include "support/private_bus.h"

namespace velmo::testing {

/// A keyring of a test's own on its bus, unlocked.
class PrivateKeyring : private Unmovable {
public:
    explicit PrivateKeyring(const PrivateBus &bus);
    ~PrivateKeyring();

    void restart();
    void lock();
    /// From here on it answers nobody.
    void stop();

    /// What secret-tool prints, the way a person looks into the keyring.
    [[nodiscard]] static QString secretTool(const QStringList &arguments);

private:
    void start();
    void end();

    const PrivateBus &m_bus;
    QTemporaryDir m_home;
    QProcess m_daemon;
};

} // namespace velmo::testing
