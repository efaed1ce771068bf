#pragma once

#include "base/interface.h"
#include "base/lifetime.h"
#include "base/main_queue.h"
#include "service/status/service_status.h"

#include <QObject>

namespace velmo {

class ServiceStatusClient;

/// What is known of the service, looked at anew every second and a half while somebody wants to see it. Main thread.
class ServiceWatch final : public QObject {
    Q_OBJECT

public:
    enum class Standing { Unknown, Answers, Silent };

    /// Both outlive the watch.
    ServiceWatch(ServiceStatusClient &client, MainQueue &queue);

    /// "http://127.0.0.1:18650"
    [[nodiscard]] const QString &address() const;
    [[nodiscard]] bool isOnThisMachine() const;

    [[nodiscard]] Standing standing() const { return m_standing; }
    /// Since when it answers, as it says itself, or since when it has not, where that was seen.
    [[nodiscard]] std::optional<Date> since() const { return m_since; }
    /// Why it does not answer, or not as it should; empty when it does.
    [[nodiscard]] const QString &failure() const { return m_failure; }
    /// What it says of itself; absent where it does not, and of a service elsewhere.
    [[nodiscard]] const std::optional<ServiceHealth> &health() const { return m_health; }
    /// Whether it is known that texts cannot be sent through a mode there.
    [[nodiscard]] bool lacksLanguageModel() const;

    /// Held by whoever wants to see it: the first look is taken at once. The watch outlives it.
    class Look : public Interface {};
    [[nodiscard]] std::unique_ptr<Look> look();

Q_SIGNALS:
    void changed();
    /// A look has ended, with whatever outcome.
    void looked();

private:
    class CountedLook;

    void ask();
    void take(const StatusResult<ServiceHealth> &answer);
    void askAgainLater();
    [[nodiscard]] std::optional<Date> answeringSince() const;
    [[nodiscard]] std::optional<Date> silentSince() const;

    ServiceStatusClient &m_client;
    MainQueue &m_queue;
    Standing m_standing = Standing::Unknown;
    std::optional<Date> m_since;
    QString m_failure;
    std::optional<ServiceHealth> m_health;
    int m_looks = 0;        ///< How many want to see it.
    bool m_isAsked = false; ///< An answer is still to come.
    MainQueue::Timer m_timer;
    Lifetime m_lifetime;
};

} // namespace velmo
