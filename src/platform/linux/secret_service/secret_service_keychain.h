#pragma once

#include "platform/keychain.h"

#include <chrono>

namespace velmo {

/// The keychain of a freedesktop desktop: its Secret Service (GNOME Keyring, KWallet, KeePassXC), by libsecret. An
/// item carries the one attribute "account" and lies in the default keyring; it can be looked at with
/// `secret-tool lookup account NAME`.
class SecretServiceKeychain final : public Keychain {
public:
    /// A keyring usually answers within 30 ms; one that hung took 50 s.
    static constexpr std::chrono::milliseconds kPatience{1000};

    /// @param label what the desktop's keyring program calls the items.
    explicit SecretServiceKeychain(QString label, std::chrono::milliseconds patience = kPatience);

    [[nodiscard]] Result<std::optional<QByteArray>, KeychainFailure> read(const QString &account) override;
    [[nodiscard]] Result<void, KeychainFailure> add(const QString &account,
                                                    const QByteArray &secret) override;
    [[nodiscard]] Result<void, KeychainFailure> remove(const QString &account) override;

private:
    QString m_label;
    std::chrono::milliseconds m_patience;
};

} // namespace velmo
