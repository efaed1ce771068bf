#include "platform/linux/x11/server/loop.h"

#include "base/interface.h"

#include <algorithm>
#include <future>
#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

namespace velmo::x11 {

namespace {

/// Tells a waiting thread whether its task ran, once the task has run or was dropped.
struct Outcome : private Unmovable {
    std::promise<bool> told;
    bool hasRun = false;

    ~Outcome() { told.set_value(hasRun); }
};

} // namespace

Loop::Loop(Connection &connection)
    : m_connection(connection), m_wake(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {}

Loop::~Loop() {
    stop();
    close(m_wake);
}

void Loop::start() {
    m_runs = true;
    m_thread = std::thread([this] { run(); });
}

void Loop::stop() {
    if (!m_thread.joinable())
        return;
    post([this] { m_runs = false; });
    m_thread.join();
}

void Loop::post(Task task) {
    {
        const std::lock_guard lock(m_mutex);
        if (m_hasEnded)
            return;
        m_tasks.push_back(std::move(task));
    }
    eventfd_write(m_wake, 1);
}

bool Loop::runAndWait(const Task &task) {
    auto outcome = std::make_shared<Outcome>();
    auto hasRun = outcome->told.get_future();
    post([&task, outcome = std::move(outcome)] {
        task();
        outcome->hasRun = true;
    });
    return hasRun.get();
}

Loop::Timer Loop::after(std::chrono::milliseconds delay, Task task) {
    auto timer = std::make_shared<const Task>(std::move(task));
    m_timers.emplace(Clock::now() + delay, timer);
    return timer;
}

void Loop::addSource(int descriptor, Task handle) {
    m_sources[descriptor] = std::make_shared<const Task>(std::move(handle));
}

void Loop::run() {
    while (m_runs && !xcb_connection_has_error(m_connection.xcb())) {
        runTasks();
        runTimers();
        handleEvents();
        handleSources();
        handleEvents(); // a source may have waited for an answer, which takes in events too
        wait();
    }
    end();
}

void Loop::end() {
    std::vector<Task> dropped;
    const std::lock_guard lock(m_mutex);
    m_hasEnded = true;
    dropped.swap(m_tasks);
}

void Loop::runTasks() {
    std::vector<Task> tasks;
    {
        const std::lock_guard lock(m_mutex);
        tasks.swap(m_tasks);
    }
    for (const Task &task : tasks)
        task();
}

void Loop::runTimers() {
    const auto now = Clock::now();
    while (!m_timers.empty() && m_timers.begin()->first <= now) {
        const Timer timer = m_timers.begin()->second.lock();
        m_timers.erase(m_timers.begin());
        if (timer)
            (*timer)();
    }
}

/// Handles events until none is left and all requests are on their way. Sending may take in further events,
/// which the socket then no longer announces.
void Loop::handleEvents() {
    xcb_connection_t *xcb = m_connection.xcb();
    while (const Owned<xcb_generic_event_t> event{xcb_poll_for_event(xcb)})
        dispatch(*event);
    xcb_flush(xcb);
    while (const Owned<xcb_generic_event_t> event{xcb_poll_for_queued_event(xcb)}) {
        dispatch(*event);
        xcb_flush(xcb);
    }
}

void Loop::handleSources() {
    const auto sources = m_sources; // handling one may add or remove others
    for (const auto &[descriptor, handle] : sources) {
        const auto current = m_sources.find(descriptor);
        if (current != m_sources.end() && current->second == handle)
            (*handle)();
    }
}

void Loop::dispatch(const xcb_generic_event_t &event) {
    for (const EventHandler &handler : m_handlers)
        handler(event);
}

void Loop::wait() {
    if (!m_runs)
        return;
    std::vector<pollfd> descriptors = {
        pollfd{xcb_get_file_descriptor(m_connection.xcb()), POLLIN, 0},
        pollfd{m_wake, POLLIN, 0},
    };
    for (const auto &source : m_sources)
        descriptors.push_back(pollfd{source.first, POLLIN, 0});
    poll(descriptors.data(), descriptors.size(), millisecondsToNextTimer());
    eventfd_t posted = 0;
    eventfd_read(m_wake, &posted);
}

int Loop::millisecondsToNextTimer() const {
    if (m_timers.empty())
        return -1;
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(m_timers.begin()->first - Clock::now());
    return static_cast<int>(std::max<std::chrono::milliseconds::rep>(left.count(), 0));
}

} // namespace velmo::x11
