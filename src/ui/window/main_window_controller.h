#pragma once

#include <QObject>
#include <functional>
#include <memory>

class QQmlEngine;
class QQuickWindow;

namespace velmo {

class AccountView;
class DictionaryView;
class HomeView;
class MainWindowView;
class ModeView;
class SettingsView;
class SnippetsView;
class SpeechView;
class UndoOffer;

/// The main window: made when it is first shown; closing hides it, and the same window is shown again with the page
/// and the place it had. Main thread.
class MainWindowController final : public QObject {
    Q_OBJECT
public:
    /// What the window shows; all of it outlives the window. Null is a page that nobody selects.
    struct Models {
        MainWindowView &view;
        UndoOffer &undoOffer;
        HomeView *home;
        DictionaryView *dictionary;
        SnippetsView *snippets;
        ModeView *mode;
        AccountView *account;
        SettingsView *settings;
        SpeechView *speech;
    };

    /// @param hasTrayHost whether the person finds Velmo in a tray; asked when the window closes.
    MainWindowController(QQmlEngine &engine, const Models &models, std::function<bool()> hasTrayHost);
    ~MainWindowController() override;

    /// Shows the window and brings it to the front.
    void show();

    /// Null before it was first shown.
    [[nodiscard]] QQuickWindow *window() const;

private:
    class Window;

    QQmlEngine &m_engine;
    Models m_models;
    std::function<bool()> m_hasTrayHost;
    std::unique_ptr<Window> m_window;
};

} // namespace velmo
