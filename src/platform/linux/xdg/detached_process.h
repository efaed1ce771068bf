#pragma once

#include "base/interface.h"

#include <QObject>
#include <QSocketNotifier>
#include <QStringList>
#include <functional>
#include <memory>

namespace velmo {

/// A program of the desktop that goes on by itself, also after our end: in a session of its own, without our input and
/// output, with the signals it is used to.
class DetachedProcess : private Unmovable {
public:
    /// Whether the program could be run and said that all is well.
    using Finished = std::function<void(bool succeeded)>;

    /// Starts it. `finished` is called once in the event loop while this object lives; it may end this object.
    DetachedProcess(const QString &program, const QStringList &arguments, Finished finished);
    ~DetachedProcess();

private:
    void tellSoon();
    [[nodiscard]] bool hasSucceeded() const;

    const int m_process;    ///< Its id; -1 when it could not be run.
    const int m_descriptor; ///< Readable once it has ended; -1 where that cannot be told.
    const Finished m_finished;
    std::unique_ptr<QSocketNotifier> m_notifier;
    QObject m_context; ///< Ends what has not been told yet.
};

} // namespace velmo
