#pragma once

#include "base/interface.h"
#include "store/preferences_file.h"

#include <condition_variable>
#include <mutex>
#include <thread>

namespace velmo {

/// Brings committed changes to the disk, in a thread of its own: a commit only hands its pages to the system, so
/// nobody who changes a preference waits for the disk. A moment after a change this thread synchronises the
/// write-ahead log, copies it into the file, synchronises that, and empties the log. A process that is killed loses
/// nothing; a power cut loses the last moment at most.
///
/// The log is emptied, not just started over, because commits are not synchronised: new frames written over old ones
/// could reach the disk out of order and bring an old page back.
class WalCheckpointer : private Unmovable {
public:
    explicit WalCheckpointer(PreferencesFile file);
    ~WalCheckpointer();

    /// Something was committed. Any thread; the first call starts the thread.
    void noteChange();

    /// Waits until the last change is on the disk. None may come later.
    void finish();

private:
    void run(const std::stop_token &stop);
    [[nodiscard]] bool checkpoint();

    PreferencesFile m_file;
    int m_lastCode = 0; // of the thread: a failure that goes on is logged once
    std::mutex m_mutex; // of m_changed and the start of the thread
    std::condition_variable_any m_wake;
    bool m_changed = false;
    std::jthread m_thread;
};

} // namespace velmo
