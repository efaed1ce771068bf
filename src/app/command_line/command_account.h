#pragma once

class QThreadPool;

namespace velmo {

class AuthManager;
class HttpClient;
class SyncManager;

/// The person's account as commands use it, whose process ends when they are done. What it refers to outlives it. Main
/// thread.
struct CommandAccount {
    AuthManager &auth;
    SyncManager &sync;
    HttpClient &http;
    QThreadPool &keychainWorker;

    /// Waits, in the event loop, until it is known whether somebody is signed in.
    void waitForSession() const;
    /// Waits, in the event loop, until every request begun has its answer, and the answer its effect.
    void waitForRequests() const;
};

} // namespace velmo
