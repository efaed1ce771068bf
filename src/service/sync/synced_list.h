#pragma once

#include "base/interface.h"
#include "service/wire/service_request.h"

#include <QJsonObject>
#include <memory>

namespace velmo {

/// A stored list that is kept in step with the account: how it is sent, merged and spoken of. Works on its stored
/// text; any thread.
class SyncedList : public Interface {
public:
    /// The log lines of its exchanges; "%1" is the number of its elements, a failure is put behind.
    struct Lines {
        QString pullFailed;
        QString localPushed; ///< After a failed pull.
        QString mergePushFailed;
        QString mergePushed;
        QString pushFailed;
        QString pushed;
    };

    struct Merge {
        QString stored;
        QString logLine;
    };

    [[nodiscard]] virtual QLatin1StringView key() const = 0;
    [[nodiscard]] virtual RequestKind pull() const = 0;
    [[nodiscard]] virtual RequestKind push() const = 0;
    [[nodiscard]] virtual const Lines &lines() const = 0;

    [[nodiscard]] virtual qsizetype count(const QString &stored) const = 0;

    /// The body of a push.
    [[nodiscard]] virtual QByteArray body(const QString &stored) const = 0;

    /// The stored list and the account's as one. What went out of the stored list since the pull began is not brought
    /// back by it.
    [[nodiscard]] virtual Merge merge(const QString &storedAtPull, const QString &storedNow,
                                      const QJsonObject &reply) const = 0;
};

[[nodiscard]] std::unique_ptr<SyncedList> makeSyncedDictionary();
[[nodiscard]] std::unique_ptr<SyncedList> makeSyncedSnippets();

} // namespace velmo
