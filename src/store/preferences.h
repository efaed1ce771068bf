#pragma once

#include "base/interface.h"
#include "base/main_queue.h"
#include "base/result.h"

#include <QByteArray>
#include <QString>
#include <functional>
#include <map>
#include <optional>
#include <variant>

namespace velmo {

/// The five kinds of value a preference can have: String, Bool, Integer, Date, Data.
using PreferenceValue = std::variant<QString, bool, qint64, Date, QByteArray>;

/// Why the preferences could not be read, as the log says it. It never carries data.
struct PreferencesFailure {
    QString reason;
};

/// The user's preference domain: every piece of state that outlives the process. Values are read at the
/// moment of use and not kept, so a change applies to the next dictation. No defaults are stored; each reader
/// applies its own when a key is absent or its value is of another kind. All operations are safe on any
/// thread.
class Preferences : public Interface {
public:
    /// Given the stored value (nothing when absent), answers the value to store; nothing removes the key.
    using Change =
        std::function<std::optional<PreferenceValue>(const std::optional<PreferenceValue> &stored)>;

    /// The value as it is stored now, nothing when absent. Fails, with a log line, where that cannot be told: for
    /// those whom an absent value would lead to do harm.
    [[nodiscard]] virtual Result<std::optional<PreferenceValue>, PreferencesFailure>
    read(const QString &key) const = 0;

    /// The value as far as it can be read; one that cannot be is absent. Fit for nearly everybody.
    [[nodiscard]] virtual std::optional<PreferenceValue> value(const QString &key) const = 0;
    [[nodiscard]] virtual std::map<QString, PreferenceValue> all() const = 0;

    /// Reads, changes and writes in one transaction that no other process or thread comes between. A write
    /// that fails (disk full, read-only) is logged and leaves what was stored.
    /// @return whether the change is stored.
    virtual bool change(const QString &key, const Change &change) = 0;

    /// Makes the domain's file, and the folder it lies in, where there is none, so that they can be watched for changes
    /// of other processes. A failure is logged. A domain without a file has nothing to do.
    virtual void ensureFile() {}

    bool set(const QString &key, PreferenceValue value);
    bool remove(const QString &key);

    /// The value when it is of that kind; a value of another kind reads as absent.
    [[nodiscard]] std::optional<QString> string(const QString &key) const;
    [[nodiscard]] std::optional<bool> boolean(const QString &key) const;
    [[nodiscard]] std::optional<qint64> integer(const QString &key) const;
    [[nodiscard]] std::optional<Date> date(const QString &key) const;
    [[nodiscard]] std::optional<QByteArray> data(const QString &key) const;
};

} // namespace velmo
