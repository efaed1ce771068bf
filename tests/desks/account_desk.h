#pragma once

#include "platform/keychain.h"
#include "platform/web_authentication.h"
#include "service/account/auth_manager.h"
#include "service/http/http_client.h"
#include "store/memory_preferences.h"
#include "support/manual_main_queue.h"
#include "support/scripted_server.h"

#include <QThreadPool>
#include <map>
#include <mutex>

namespace velmo::testing {

/// A keychain of the test's own, which can be made to fail.
class FakeKeychain final : public Keychain {
public:
    [[nodiscard]] Result<std::optional<QByteArray>, KeychainFailure> read(const QString &account) override {
        const std::lock_guard lock(m_mutex);
        ++reads;
        if (failure)
            return failed(KeychainFailure{*failure});
        const auto found = items.find(account);
        return found == items.end() ? std::nullopt : std::optional(found->second);
    }

    [[nodiscard]] Result<void, KeychainFailure> add(const QString &account,
                                                    const QByteArray &secret) override {
        return change([&] { items.emplace(account, secret); });
    }

    [[nodiscard]] Result<void, KeychainFailure> remove(const QString &account) override {
        return change([&] { items.erase(account); });
    }

    // Written by the test while nobody else reads.
    std::map<QString, QByteArray> items;
    std::optional<QString> failure;
    int reads = 0;

private:
    template <class Change>
    Result<void, KeychainFailure> change(Change change) {
        const std::lock_guard lock(m_mutex);
        if (failure)
            return failed(KeychainFailure{*failure});
        change();
        return {};
    }

    std::mutex m_mutex;
};

/// A browser that does what the test says.
struct FakeWebAuthentication final : WebAuthentication {
    QString address;
    QString scheme;
    Completion complete;

    void start(const QString &page, const QString &callbackScheme, Completion completion) override {
        address = page;
        scheme = callbackScheme;
        complete = std::move(completion);
    }
    void cancel() override {
        if (auto completion = std::exchange(complete, {}))
            completion(
                failed(WebAuthenticationFailure{WebAuthenticationFailure::Kind::Cancelled, QString()}));
    }
};

/// An account at a scripted service. What runs on other threads is waited for by `settle`, never by time.
struct AccountDesk {
    AccountDesk() { worker.setMaxThreadCount(1); }

    void createAuth() {
        auth = std::make_unique<AuthManager>(
            *ServiceOrigin::parse(server.origin()), QStringLiteral("https://id.example"),
            AuthManager::Collaborators{queue, worker, preferences, keychain, web, http});
        auth->onSignedIn = [this] { ++signedIn; };
    }

    /// Lets what is under way come up to its answer, which still waits for the main thread.
    void awaitAnswers() {
        worker.waitForDone();
        http.waitUntilIdle();
    }

    /// Runs everything that is under way to its end. A step can hand over to another thread a few times.
    void settle() {
        for (int hop = 0; hop < 8; ++hop) {
            awaitAnswers();
            queue.runPosted();
        }
    }

    /// The requests that came, as "POST /path body".
    [[nodiscard]] QStringList requests() const {
        QStringList lines;
        for (const ReceivedRequest &request : server.requests())
            lines.append(
                QString::fromUtf8(request.method + ' ' + request.path + ' ' + request.body).trimmed());
        return lines;
    }

    ManualMainQueue queue;
    MemoryPreferences preferences;
    FakeKeychain keychain;
    FakeWebAuthentication web;
    ScriptedServer server;
    HttpClient http;
    QThreadPool worker;
    int signedIn = 0;
    std::unique_ptr<AuthManager> auth;
};

/// The same, there before what is built on it.
struct RestoredAccount : AccountDesk {
    RestoredAccount() {
        createAuth();
        settle();
    }
};

} // namespace velmo::testing
