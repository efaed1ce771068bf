#pragma once

#include "base/lifetime.h"
#include "base/main_queue.h"
#include "platform/linux/x11/desktop/application_names.h"
#include "platform/linux/x11/server/desktop_watch.h"
#include "platform/workspace.h"

#include <QHash>
#include <QThreadPool>
#include <mutex>

namespace velmo::x11 {

/// The application of the window that the window manager calls active. The watch's thread follows the window,
/// a worker finds its name, and the main thread only takes what is known.
class ActiveApplication final : public Workspace, private DesktopWatch::Observer {
public:
    /// `watch` may be null: then nothing is ever known.
    ActiveApplication(MainQueue &queue, std::shared_ptr<DesktopWatch> watch);
    ~ActiveApplication() override;

    [[nodiscard]] std::optional<QString> frontmostApplicationName() const override;
    void setActivationHandler(ActivationHandler handler) override { m_handler = std::move(handler); }

private:
    void rootPropertyChanged(xcb_atom_t property) override;
    void readActiveWindow();
    [[nodiscard]] bool hasOwnWindowKeyboard();
    [[nodiscard]] WindowIdentity identify(xcb_window_t window);
    void setName(const QString &name);
    void findName(const WindowIdentity &window);
    void announce(bool isThisApplication);

    MainQueue &m_queue;
    std::shared_ptr<DesktopWatch> m_watch;
    ActivationHandler m_handler; ///< Main thread.

    // The watch's thread:
    xcb_window_t m_window = XCB_WINDOW_NONE;

    // The worker:
    QHash<QString, QString> m_names; ///< By what identifies the application.

    mutable std::mutex m_mutex; ///< Of the two below.
    QString m_name;             ///< Null when no application is at the front.
    int m_activation = 0;       ///< Counts them, so that a name found late is not given to the next one.

    Lifetime m_lifetime;
    QThreadPool m_worker; ///< Last: what runs there uses the others.
};

} // namespace velmo::x11
