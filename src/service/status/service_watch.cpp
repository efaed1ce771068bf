#include "service/status/service_watch.h"

#include "service/status/service_status_client.h"

#include <tuple>

using namespace std::chrono_literals;

namespace velmo {

namespace {

/// Often enough to see a service start or a download go on, seldom enough to cost nothing (a product decision).
constexpr auto kInterval = 1500ms;

} // namespace

/// Counts those who look.
class ServiceWatch::CountedLook final : public Look {
public:
    explicit CountedLook(ServiceWatch &watch) : m_watch(watch) {
        if (++m_watch.m_looks == 1)
            m_watch.ask();
    }
    ~CountedLook() override {
        if (--m_watch.m_looks == 0)
            m_watch.m_timer.reset();
    }

private:
    ServiceWatch &m_watch;
};

ServiceWatch::ServiceWatch(ServiceStatusClient &client, MainQueue &queue)
    : m_client(client), m_queue(queue) {}

const QString &ServiceWatch::address() const {
    return m_client.origin().baseURL();
}

bool ServiceWatch::isOnThisMachine() const {
    return m_client.origin().isThisMachine();
}

bool ServiceWatch::lacksLanguageModel() const {
    return m_health && !m_health->engine.isEmpty() && m_health->languageModel.isEmpty();
}

std::unique_ptr<ServiceWatch::Look> ServiceWatch::look() {
    return std::make_unique<CountedLook>(*this);
}

void ServiceWatch::ask() {
    m_timer.reset();
    if (std::exchange(m_isAsked, true))
        return;
    if (isOnThisMachine()) {
        m_client.health(
            onMain(m_queue, m_lifetime, [this](const StatusResult<ServiceHealth> &answer) { take(answer); }));
        return;
    }
    m_client.reach(onMain(m_queue, m_lifetime, [this](const StatusResult<void> &answer) {
        take(answer.map([] { return ServiceHealth(); }));
    }));
}

void ServiceWatch::take(const StatusResult<ServiceHealth> &answer) {
    const bool isSilent = !answer && answer.error().isSilent;
    const auto before = std::tuple(m_standing, m_since, m_failure, m_health);
    m_failure = answer ? QString() : answer.error().description;
    m_health = answer && isOnThisMachine() ? std::optional(*answer) : std::nullopt;
    m_since = isSilent ? silentSince() : answeringSince();
    m_standing = isSilent ? Standing::Silent : Standing::Answers;
    if (before != std::tuple(m_standing, m_since, m_failure, m_health))
        Q_EMIT changed();
    m_isAsked = false;
    askAgainLater();
    Q_EMIT looked();
}

std::optional<Date> ServiceWatch::answeringSince() const {
    return m_health ? m_health->since : std::nullopt;
}

/// Of a service that was silent from the first look on, nobody knows.
std::optional<Date> ServiceWatch::silentSince() const {
    if (m_standing == Standing::Answers)
        return m_queue.now();
    return m_standing == Standing::Silent ? m_since : std::nullopt;
}

void ServiceWatch::askAgainLater() {
    if (m_looks > 0)
        m_timer = m_queue.after(kInterval, m_lifetime.guard([this] { ask(); }));
}

} // namespace velmo
