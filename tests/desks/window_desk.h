#pragma once

#include "base/calendar.h"
#include "desks/list_desk.h"
#include "dictation/gestures/trigger_fakes.h"
#include "store/history_store.h"
#include "ui/models/dictionary_view.h"
#include "ui/models/home_view.h"
#include "ui/models/main_window_view.h"
#include "ui/models/snippets_view.h"
#include "ui/models/trigger_key_name.h"
#include "ui/window/main_window_controller.h"

namespace velmo::testing {

/// The state of the pages that hold no texts; null for a page that is not shown.
struct OtherPages {
    ModeView *mode = nullptr;
    AccountView *account = nullptr;
    SettingsView *settings = nullptr;
    SpeechView *speech = nullptr;
};

/// Somebody's texts, and the main window over them, with the real stores and page states.
template <class Queue>
struct WindowDesk : ListDesk<Queue> {
    explicit WindowDesk(QQmlEngine &engine, const std::function<void(MemoryPreferences &)> &fill = {},
                        const OtherPages &pages = {})
        : ListDesk<Queue>(fill),
          controller(engine,
                     {view, this->undoOffer, &home, &dictionary, &snippetsView, pages.mode, pages.account,
                      pages.settings, pages.speech},
                     [this] { return hasTray; }) {}

    std::optional<qint64> serverTotalWords;
    QStringList copied;
    bool hasTray = true;
    HistoryStore history{this->preferences, this->queue};
    FakeKeyboardKeys keys;
    TriggerKeyName triggerKeyName{this->preferences, this->watch, keys};
    Calendar calendar{{QStringLiteral("en_US"), QStringLiteral("UTC")}};
    MainWindowView view{QStringLiteral("1.0.0")};
    HomeView home{{this->queue, this->preferences, this->watch, triggerKeyName, history, calendar, *this,
                   [this] { return serverTotalWords; }, [this](const QString &text) { copied.append(text); },
                   this->undoOffer}};
    DictionaryView dictionary{this->page};
    SnippetsView snippetsView{this->page};
    MainWindowController controller;
};

} // namespace velmo::testing
