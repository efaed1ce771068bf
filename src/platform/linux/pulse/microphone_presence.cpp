#include "platform/linux/pulse/microphone_presence.h"

#include "base/lifetime.h"
#include "base/main_queue.h"
#include "platform/linux/pulse/connection.h"
#include "platform/linux/pulse/source.h"

#include <map>

using namespace std::chrono_literals;

namespace velmo {

namespace pulse {

namespace {

/// A server that has not answered by then has no microphone for us.
constexpr auto kPatience = 1000ms;

/// One look at the default source; says under the connection's lock, once, what it found.
class Look final : Connection::Client {
public:
    using Found = std::function<void(bool present)>;

    Look(Connection &connection, Found found) : m_connection(connection), m_found(std::move(found)) {
        const Connection::Lock lock(m_connection);
        m_connection.join(*this);
    }
    ~Look() {
        const Connection::Lock lock(m_connection);
        m_connection.leave(*this);
        m_query.cancel();
    }

private:
    void connected(pa_context *context) override {
        m_query.askForDefault(context, [this](const pa_source_info *source) {
            m_connection.leave(*this);
            m_found(source && isMicrophone(*source));
        });
    }
    void disconnected(int) override { m_found(false); }

    Connection &m_connection;
    Found m_found;
    SourceQuery m_query;
};

class DefaultMicrophonePresence final : public MicrophonePresence {
public:
    DefaultMicrophonePresence(std::shared_ptr<Connection> connection, MainQueue &queue)
        : m_connection(std::move(connection)), m_queue(queue) {}

    void check(Answer answer) override {
        const int number = ++m_lastNumber;
        const auto finish = [this, number](bool present) { finishCheck(number, present); };
        Check &check = m_checks[number];
        check.answer = std::move(answer);
        check.timeout = m_queue.after(kPatience, [finish] { finish(false); });
        check.look = std::make_unique<Look>(*m_connection, onMain(m_queue, m_lifetime, finish));
    }

private:
    struct Check {
        Answer answer;
        MainQueue::Timer timeout;
        std::unique_ptr<Look> look;
    };

    /// Does nothing when the answer comes beside the time-out.
    void finishCheck(int number, bool present) {
        const auto check = m_checks.find(number);
        if (check == m_checks.end())
            return;
        const Answer answer = std::move(check->second.answer);
        m_checks.erase(check);
        answer(present);
    }

    std::shared_ptr<Connection> m_connection;
    MainQueue &m_queue;
    int m_lastNumber = 0;
    std::map<int, Check> m_checks;
    Lifetime m_lifetime;
};

} // namespace

} // namespace pulse

std::unique_ptr<MicrophonePresence> makePulseMicrophonePresence(std::shared_ptr<pulse::Connection> connection,
                                                                MainQueue &queue) {
    return std::make_unique<pulse::DefaultMicrophonePresence>(std::move(connection), queue);
}

} // namespace velmo
