#include "localservice/http/connection_threads.h"

#include <system_error>
#include <thread>
#include <utility>

namespace velmo::localservice {

void ConnectionThreads::enqueue(std::function<void()> serve) {
    const std::lock_guard lock(m_mutex);
    if (m_running < m_bound && start(serve))
        ++m_running;
    else
        m_waiting.push_back(std::move(serve));
}

bool ConnectionThreads::start(std::function<void()> serve) {
    try {
        std::thread(&ConnectionThreads::run, this, std::move(serve)).detach();
        return true;
    } catch (const std::system_error &) {
        return false; // the system has no thread left: the connection waits for one that ends
    }
}

void ConnectionThreads::run(std::function<void()> serve) {
    for (;;) {
        serve();
        const std::lock_guard lock(m_mutex);
        if (m_waiting.empty()) {
            --m_running;
            m_ended.notify_all();
            return;
        }
        serve = std::move(m_waiting.front());
        m_waiting.pop_front();
    }
}

void ConnectionThreads::shutdown() {
    std::unique_lock lock(m_mutex);
    m_ended.wait(lock, [this] { return m_running == 0; });
}

} // namespace velmo::localservice
