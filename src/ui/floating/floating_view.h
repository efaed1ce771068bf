#pragma once

#include "base/main_queue.h"
#include "platform/floating_windows.h"

#include <QQuickView>

namespace velmo {

class FloatingContent;

/// A window that floats over all others on every desktop, full-screen windows included, and is as translucent as its
/// content wherever the display can do that. Elsewhere its content is told to be opaque, and the window has the shape of
/// what is drawn. Main thread.
class FloatingView final : public QQuickView {
    Q_OBJECT
public:
    enum class Keyboard { Never, CanBorrow };

    /// All three outlive the view. @param keyboard whether the window ever gets the keys that are pressed.
    FloatingView(QQmlEngine &engine, MainQueue &queue, FloatingWindows &desktop, Keyboard keyboard);
    ~FloatingView() override;

    /// Loads the component, a FloatingContent, as the window's content; what the properties point to outlives the view.
    void setContent(const QUrl &component, const QVariantMap &properties);
    /// Null before it is set.
    [[nodiscard]] FloatingContent *content() const;

Q_SIGNALS:
    /// Panels and docks may leave more or less free of the screens.
    void panelsChanged();

private:
    void applyInputAreas();
    void applySolidAreas();
    void applyComposition();
    void comeForward();

    MainQueue &m_queue;
    FloatingWindows &m_desktop;
    std::unique_ptr<FloatingWindows::Handle> m_watch;
    MainQueue::Timer m_raiseTimer; ///< Runs for a while after the window has come forward.
    bool m_shouldRaise = false;    ///< It has to once more when the timer runs out.
};

} // namespace velmo
