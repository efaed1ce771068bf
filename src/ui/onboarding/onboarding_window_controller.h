#pragma once

#include <QObject>
#include <memory>

class QQmlEngine;
class QQuickView;
class QQuickWindow;

namespace velmo {

class OnboardingView;
class Preferences;

/// The window of the set-up. It is made when it is first shown and gone when the person is done with it; closed before the
/// set-up is complete, it comes again at the next launch. A session without keys is completed apart: another one has its set-up all the same.
/// Main thread.
class OnboardingWindowController final : public QObject {
    Q_OBJECT

public:
    /// All of them outlive the controller.
    OnboardingWindowController(QQmlEngine &engine, Preferences &preferences, OnboardingView &view);
    ~OnboardingWindowController() override;

    /// Brings the window to the front.
    void show();

    /// None before it is shown and after the person is done.
    [[nodiscard]] QQuickWindow *window() const;

private:
    void createWindow();
    void complete();
    void close();

    QQmlEngine &m_engine;
    Preferences &m_preferences;
    OnboardingView &m_view;
    std::unique_ptr<QQuickView> m_window;
};

} // namespace velmo
