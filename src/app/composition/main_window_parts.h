#pragma once

#include "base/calendar.h"
#include "base/collation.h"
#include "ui/models/dictionary_view.h"
#include "ui/models/home_view.h"
#include "ui/models/main_window_view.h"
#include "ui/models/mode_view.h"
#include "ui/models/snippets_view.h"
#include "ui/models/undo_offer.h"
#include "ui/window/main_window_controller.h"

namespace velmo {

class CoreParts;
class SetupParts;

/// The parts list of the main window: its pages' states over the stores, and the window. Made when it is first shown.
/// Main thread.
class MainWindowParts {
public:
    /// All of them outlive the window.
    MainWindowParts(CoreParts &composition, SetupParts &setup, QQmlEngine &engine,
                    std::function<bool()> hasTrayHost);

    void show();

private:
    MainWindowParts(CoreParts &composition, SetupParts &setup, QQmlEngine &engine,
                    std::function<bool()> hasTrayHost, const Region &region);
    [[nodiscard]] HomeView::Collaborators homePage(CoreParts &composition, bool canWatchKeys);
    [[nodiscard]] ListPage listPage(CoreParts &composition);

    Calendar m_calendar;
    Collation m_collation;
    UndoOffer m_undoOffer;
    MainWindowView m_view;
    HomeView m_home;
    DictionaryView m_dictionary;
    SnippetsView m_snippets;
    ModeView m_mode;
    MainWindowController m_controller;
};

} // namespace velmo
