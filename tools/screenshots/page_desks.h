#pragma once

#include "base/calendar.h"
#include "service/account/account_fixture.h"
#include "service/sync/sync_manager.h"
#include "store/custom_modes.h"
#include "store/history_store.h"
#include "ui/desktop_fakes.h"
#include "ui/models/account_view.h"
#include "ui/models/mode_view.h"
#include "ui/models/settings_view.h"
#include "ui/models/undo_offer.h"

#include <memory>

namespace velmo::screenshots {

/// The settings page of somebody who has chosen a few languages.
struct SettingsDesk {
    testing::FakeDesktop desktop;
    SettingsView view{{desktop.preferences, desktop.watch, desktop.listener, desktop.triggerKey,
                       desktop.accessibility, desktop.microphone, desktop.microphone, desktop.systemSettings,
                       desktop.loginItem, QStringLiteral("1.0.0")}};

    SettingsDesk() {
        desktop.preferences.set(keys::selectedLanguages, QStringLiteral("en,no,sv"));
        desktop.preferences.set(keys::deviceId, QStringLiteral("5d0c9a52-7a1e-4c0b-9f3e-2b8a61d4e7c3"));
        desktop.watch.noteWrite();
        desktop.queue.runPosted();
        desktop.listener.setupFnKey();
        desktop.loginItem.isOn = true;
    }

    void loseKeys() {
        desktop.accessibility.trusted = false;
        desktop.listener.stopListening();
    }
};

/// The mode page, at first without modes of one's own.
struct ModeDesk {
    testing::ManualMainQueue queue;
    MemoryPreferences preferences;
    PreferenceWatch watch{preferences, queue};
    UndoOffer undoOffer{queue};
    ModeView view{preferences, watch, undoOffer};

    void addCustomModes() {
        addCustomMode(
            preferences,
            {QStringLiteral("1"), QStringLiteral("Email Writer"),
             QStringLiteral(
                 "Write the text as a short, friendly e-mail with a greeting and my name at the end."),
             QStringLiteral("envelope")});
        addCustomMode(preferences,
                      {QStringLiteral("2"), QStringLiteral("Standup Notes"),
                       QStringLiteral("Three short lines: yesterday, today, what is in the way."),
                       QStringLiteral("lightbulb")});
    }
};

/// An account at a scripted service, as the tests have it.
class AccountDesk : public testing::AccountTest {
public:
    explicit AccountDesk(bool isLocal) {
        createAuth();
        settle();
        m_sync = std::make_unique<SyncManager>(
            *ServiceOrigin::parse(server.origin()),
            SyncManager::Collaborators{queue, worker, preferences, m_history, *auth, *auth, http});
        view = std::make_unique<AccountView>(
            AccountView::Collaborators{queue, *auth, *m_sync, m_calendar, isLocal});
        server.answer("/api/sync/dictionary", 200, R"({"words":[],"deletedWords":[]})");
        server.answer("/api/sync/snippets", 200, R"({"snippets":[]})");
    }

    void beginSignIn() {
        view->signIn();
        queue.runPosted();
    }

    void signIn(int status) {
        server.answer(
            "/api/auth/apple", status,
            R"({"token":"t","user":{"id":"1","name":"Ingrid Solberg","email":"ingrid.solberg@example.com"}})");
        beginSignIn();
        web.complete(QStringLiteral("velmo://auth?id_token=t"));
        settle();
    }

    void lockKeyring() { keychain.failure = QStringLiteral("The keyring is locked."); }

    void synchronise() {
        view->syncNow();
        settle();
        queue.advance(std::chrono::minutes(5));
    }

    void TestBody() override {}

    std::unique_ptr<AccountView> view;

private:
    HistoryStore m_history{preferences, queue};
    Calendar m_calendar{{QStringLiteral("en_US"), QStringLiteral("Europe/Oslo")}};
    std::unique_ptr<SyncManager> m_sync;
};

} // namespace velmo::screenshots
