#pragma once

#include "base/main_queue.h"
#include "platform/floating_windows.h"
#include "platform/global_mouse_monitor.h"

#include <QObject>
#include <QRect>
#include <memory>

class QQmlEngine;

namespace velmo {

class FloatingView;
class MenuBarView;

/// The popover of the status item. It opens beside the item, or at the pointer where the item's place is not known, has
/// the keyboard, and closes by Escape, by a click elsewhere and when another window gets the keyboard. Its content
/// exists only while it is open. Main thread.
class PopoverWindow final : public QObject {
    Q_OBJECT
public:
    static constexpr QSize contentSize{340, 460}; ///< A product decision, in logical pixels.

    /// Whom the popover works with; all of them outlive it.
    struct Collaborators {
        QQmlEngine &engine;
        MainQueue &queue;
        FloatingWindows &desktop;
        GlobalMouseMonitor &mouse;
    };
    using MakeContent = std::function<std::unique_ptr<MenuBarView>()>;

    PopoverWindow(const Collaborators &collaborators, MakeContent makeContent);
    ~PopoverWindow() override;

    /// Shows the popover if it is not shown, closes it otherwise.
    /// @param item the frame of the status item; empty where it is not known.
    void toggle(QRect item);
    void close();

    [[nodiscard]] bool isShown() const { return m_view != nullptr; }
    /// The window; null while the popover is not shown.
    [[nodiscard]] FloatingView *view() const { return m_view.get(); }

    /// Where the popover lies: below what it belongs to, above it in the lower half of the screen, and within what docks
    /// leave free of it.
    [[nodiscard]] static QRect placement(QRect item, QRect visibleFrame);

private:
    void show(QRect item);
    [[nodiscard]] bool isDictating() const;
    void borrowKeyboard();
    void clicked();
    void activeChanged();
    [[nodiscard]] bool hasThisClickClosed() const;

    Collaborators m_with;
    MakeContent m_makeContent;
    std::unique_ptr<FloatingView> m_view;
    const MenuBarView *m_content = nullptr; ///< Belongs to the view.
    std::unique_ptr<FloatingWindows::KeyboardLoan> m_keyboard;
    MainQueue::Timer m_focusTimer;
    std::unique_ptr<GlobalMouseMonitor::Watch> m_clickWatch;
    QRect m_frame; ///< Of the content, on the desktop.
    QPoint m_closingClick;
    std::chrono::nanoseconds m_closedAt{0}; ///< By that click; 0 when it was closed otherwise.
};

} // namespace velmo
