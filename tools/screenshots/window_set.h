#pragma once

#include "base/calendar.h"
#include "base/collation.h"
#include "base/qt_main_queue.h"
#include "dictation/gestures/trigger_fakes.h"
#include "service/sync/list_pushes.h"
#include "service/wire/session_interfaces.h"
#include "store/history_store.h"
#include "store/memory_preferences.h"
#include "store/preference_watch.h"
#include "ui/models/dictionary_view.h"
#include "ui/models/home_view.h"
#include "ui/models/main_window_view.h"
#include "ui/models/snippets_view.h"
#include "ui/models/trigger_key_name.h"
#include "ui/models/undo_offer.h"
#include "ui/window/main_window_controller.h"

#include <QSize>

namespace velmo::screenshots {

/// The afternoon on which the pictures are taken.
class PictureClock final : public MainQueue {
public:
    void post(Task task) override { m_queue.post(std::move(task)); }
    [[nodiscard]] Timer after(std::chrono::milliseconds delay, Task task) override;
    [[nodiscard]] Date now() const override;
    [[nodiscard]] std::chrono::nanoseconds uptime() const override { return m_queue.uptime(); }

private:
    QtMainQueue m_queue;
};

/// The state of the pages that hold no texts; null for a page that is not shown.
struct OtherPages {
    ModeView *mode = nullptr;
    AccountView *account = nullptr;
    SettingsView *settings = nullptr;
};

/// Somebody's texts, and the main window over them, with the real stores and page states.
class WindowSet : private Account, private ListPushes {
public:
    enum class Contents { Filled, Empty, Overfull };

    WindowSet(QQmlEngine &engine, Contents contents, const QString &triggerKey = {}, OtherPages pages = {});

    /// Shows the window; sizes in logical pixels.
    QQuickWindow &show(QSize size = QSize(900, 600));

    [[nodiscard]] MainWindowView &view() { return m_view; }
    [[nodiscard]] HomeView &home() { return m_home; }
    [[nodiscard]] DictionaryView &dictionary() { return m_dictionary; }
    [[nodiscard]] SnippetsView &snippets() { return m_snippets; }

private:
    [[nodiscard]] bool isLoggedIn() const override { return true; }
    void pushDictionary() override {}
    void pushSnippets() override {}

    PictureClock m_clock;
    MemoryPreferences m_preferences;
    PreferenceWatch m_watch{m_preferences, m_clock};
    Contents m_contents;
    HistoryStore m_historyStore;
    testing::FakeKeyboardKeys m_keys;
    TriggerKeyName m_triggerKeyName{m_preferences, m_watch, m_keys};
    Calendar m_calendar{{QStringLiteral("en_US"), QStringLiteral("UTC")}};
    Collation m_collation{QStringLiteral("nb_NO")};
    UndoOffer m_undoOffer{m_clock};
    MainWindowView m_view{QStringLiteral("1.0.0")};
    HomeView m_home;
    DictionaryView m_dictionary;
    SnippetsView m_snippets;
    MainWindowController m_controller;
};

} // namespace velmo::screenshots
