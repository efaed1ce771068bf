#pragma once

#include "base/main_queue.h"
#include "dictation/dictation_display.h"
#include "platform/global_mouse_monitor.h"

#include <QPointer>
#include <QRect>
#include <QVariantAnimation>
#include <memory>

class QQmlEngine;
class QScreen;

namespace velmo {

class FloatingBar;
class FloatingView;
class FloatingWindows;

/// Owns the floating bar's panel: at the bottom centre of the screen the pointer is on, above every window, never with
/// the keyboard. Main thread.
class RecordingOverlayController final : public QObject, public OverlayDisplay {
    Q_OBJECT
public:
    // Product decisions, in logical pixels.
    static constexpr QSize idleSize{240, 50};
    static constexpr QSize activeSize{392, 60};
    static constexpr int bottomMargin = 8;
    /// The window shows a tip of two lines above the handle, with its shadow, and the shadow below the bar; it keeps its
    /// size, since a window that changes it at every frame flickers.
    static constexpr QSize windowSize{activeSize.width(), 92};

    /// Whom the controller works with; all of them outlive it.
    struct Collaborators {
        QQmlEngine &engine;
        MainQueue &queue;
        FloatingWindows &desktop;
        GlobalMouseMonitor &mouse;
    };

    explicit RecordingOverlayController(const Collaborators &collaborators);
    ~RecordingOverlayController() override;

    /// Puts the panel up, once, with that content.
    void show(std::unique_ptr<FloatingBar> bar);
    /// The panel grows or shrinks, on the screen the pointer is on now.
    void update(State state) override;

    /// Where the window lies on a screen: in the middle at the foot of what docks leave free.
    [[nodiscard]] static QRect placement(QRect visibleFrame);

    /// The window, which shows more than the panel: shadows and tips. Null before `show`.
    [[nodiscard]] FloatingView *overlayPanel() const { return m_overlayPanel.get(); }

private:
    void followScreens();
    void followScreen(QScreen *screen);
    void screensChanged();
    void mouseClicked();
    [[nodiscard]] QRect windowFrame() const;
    void moveIn(std::chrono::milliseconds duration);

    Collaborators m_with;
    std::unique_ptr<FloatingView> m_overlayPanel;
    QPointer<QScreen> m_currentScreen;
    QVariantAnimation m_move; ///< Of the window's position.
    std::unique_ptr<GlobalMouseMonitor::Watch> m_mouseMonitor;
};

} // namespace velmo
