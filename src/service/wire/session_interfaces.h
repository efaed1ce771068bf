#pragma once

#include "base/interface.h"
#include "base/main_queue.h"

#include <QString>
#include <functional>
#include <optional>

namespace velmo {

/// Where requests get the session token from.
class TokenSource : public Interface {
public:
    /// The session token as the keychain holds it now, or nothing. May wait for the keychain, at most a
    /// second, so it is never called on the main thread. Any other thread.
    [[nodiscard]] virtual std::optional<QString> authToken() = 0;

    /// A dictation has begun and will need the token: begins to read it. Main thread; returns at once.
    virtual void prepareToken() = 0;
};

/// Whether somebody is signed in. Main thread.
class Account : public Interface {
public:
    [[nodiscard]] virtual bool isLoggedIn() const = 0;

    /// Calls back once it is known whether the session of the last run goes on; at once where it is. A keychain that had no
    /// answer is asked again: keyrings are often unlocked only after the session has begun.
    virtual void whenRestored(const std::function<void()> &callback) { callback(); }
};

/// Brings dictionary, snippets and statistics in step with the service. Main thread.
class Synchronisation : public Interface {
public:
    /// Begins a full synchronisation; nothing while nobody is signed in. Returns at once.
    virtual void syncAll() = 0;

    /// When a list was pushed last; none before that.
    [[nodiscard]] virtual std::optional<Date> lastSyncDate() const = 0;
};

/// Counts dictations at the service.
class StatisticsReporter : public Interface {
public:
    /// Adds the words of one dictation. Main thread; returns at once, a failure is only logged.
    virtual void incrementStats(qsizetype words) = 0;
};

} // namespace velmo
