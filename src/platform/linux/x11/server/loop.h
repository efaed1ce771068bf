#pragma once

#include "base/interface.h"
#include "platform/linux/x11/server/connection.h"

#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

namespace velmo::x11 {

/// A thread that waits for events of a connection, for tasks and for deadlines, and runs what belongs to them
/// one after another. Everything that talks to the X server lives there: the server may be slow to answer,
/// and the main thread never waits for it.
class Loop : private Unmovable {
public:
    using Task = std::function<void()>;
    using EventHandler = std::function<void(const xcb_generic_event_t &)>;
    /// A task that waits for its moment; dropping it cancels the task.
    using Timer = std::shared_ptr<const Task>;

    explicit Loop(Connection &connection);
    ~Loop();

    /// Every event goes to every handler, errors of requests among them. Before `start`.
    void addHandler(EventHandler handler) { m_handlers.push_back(std::move(handler)); }
    void start();
    /// Nothing of ours runs any more once this returns. Tasks that still wait are dropped.
    void stop();

    /// Runs the task after all that were posted before. Any thread.
    void post(Task task);
    /// The same, and returns once the task has run. Any thread but the loop's own.
    /// @return false, without having run it, when the loop has ended.
    [[nodiscard]] bool runAndWait(const Task &task);
    /// Runs the task once the time has passed. The loop's thread.
    [[nodiscard]] Timer after(std::chrono::milliseconds delay, Task task);

    /// Waits for this descriptor too. `handle` is called after every wake-up, whatever caused it: a second
    /// connection may hold events that its descriptor no longer announces. The loop's thread.
    void addSource(int descriptor, Task handle);
    void removeSource(int descriptor) { m_sources.erase(descriptor); }

    /// Handles the events that have arrived by now: for a task that asked the server something and goes on
    /// from what happened before the answer. The loop's thread.
    void handleEvents();

private:
    using Clock = std::chrono::steady_clock;

    void run();
    void end();
    void runTasks();
    void runTimers();
    void handleSources();
    void dispatch(const xcb_generic_event_t &event);
    void wait();
    [[nodiscard]] int millisecondsToNextTimer() const;

    Connection &m_connection;
    int m_wake; ///< Becomes readable when a task was posted.
    std::vector<EventHandler> m_handlers;
    std::map<int, std::shared_ptr<const Task>> m_sources;
    std::multimap<Clock::time_point, std::weak_ptr<const Task>> m_timers;
    bool m_runs = false;
    std::mutex m_mutex; ///< Of the two below.
    std::vector<Task> m_tasks;
    bool m_hasEnded = false;
    std::thread m_thread;
};

} // namespace velmo::x11
