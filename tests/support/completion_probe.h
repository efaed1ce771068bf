#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <stdexcept>
#include <thread>

namespace velmo::testing {

/// Stands in for the completion of an operation: keeps the first outcome and counts how often it is called. A
/// call that comes after the probe's end still finds a place to go.
template <class Outcome>
class CompletionProbe {
public:
    [[nodiscard]] std::function<void(Outcome)> callback() {
        return [state = m_state](Outcome outcome) {
            const std::lock_guard lock(state->mutex);
            ++state->calls;
            if (!state->outcome)
                state->outcome.emplace(std::move(outcome));
            state->thread = std::this_thread::get_id();
            state->called.notify_all();
        };
    }

    /// The first outcome, waited for. A minute is far beyond every limit of the tests: they have failed then.
    [[nodiscard]] Outcome outcome() const {
        std::unique_lock lock(m_state->mutex);
        if (!m_state->called.wait_for(lock, std::chrono::minutes(1), [this] { return m_state->calls > 0; }))
            throw std::runtime_error("no outcome came");
        return *m_state->outcome;
    }

    [[nodiscard]] int calls() const {
        const std::lock_guard lock(m_state->mutex);
        return m_state->calls;
    }

    /// Where the last call came.
    [[nodiscard]] std::thread::id thread() const {
        const std::lock_guard lock(m_state->mutex);
        return m_state->thread;
    }

private:
    struct State {
        std::mutex mutex;
        std::condition_variable called;
        int calls = 0;
        std::optional<Outcome> outcome;
        std::thread::id thread;
    };
    std::shared_ptr<State> m_state = std::make_shared<State>();
};

} // namespace velmo::testing
