#pragma once

#include "base/interface.h"
#include "base/result.h"

#include <QByteArray>
#include <QString>
#include <optional>

namespace velmo {

/// Why the keychain did not do as asked, as a sentence for the log: "The keyring is locked."
struct KeychainFailure {
    QString reason;
};

/// Where the desktop keeps a person's secrets: items of bytes, each found by the name of an account alone. Nothing
/// asks the person for a password: a keychain that is locked is a failure like one that is absent. Every operation
/// may wait, at most about a second, so none is called on the main thread. Any other thread.
class Keychain : public Interface {
public:
    /// The bytes of the item, or nothing where there is no such item.
    [[nodiscard]] virtual Result<std::optional<QByteArray>, KeychainFailure> read(const QString &account) = 0;

    /// Makes an item. One of the same account that is there already is to be removed first.
    [[nodiscard]] virtual Result<void, KeychainFailure> add(const QString &account,
                                                            const QByteArray &secret) = 0;

    /// Removes every item of the account. That there is none is no failure.
    [[nodiscard]] virtual Result<void, KeychainFailure> remove(const QString &account) = 0;
};

} // namespace velmo
