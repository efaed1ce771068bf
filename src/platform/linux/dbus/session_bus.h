#pragma once

#include "platform/application_bus.h"

#include <memory>

namespace velmo {

/// The D-Bus session bus. Whoever goes by the name offers, at the path of the name, the desktop's own interface
/// org.freedesktop.Application (Activate, Open) and com.tarnwell.velmo.Commands, whose one method
/// `Run(as words) → (i status, s output, s message)` lets a script without `velmo` at hand do the same:
///
///     busctl --user call com.tarnwell.velmo /com/tarnwell/velmo com.tarnwell.velmo.Commands Run as 1 toggle
class SessionBus final : public ApplicationBus {
public:
    /// The name of the desktop application.
    static constexpr QLatin1StringView applicationName{"com.tarnwell.velmo"};
    /// The name of a sign-in on the command line while no application runs.
    static constexpr QLatin1StringView signInName{"com.tarnwell.velmo.SignIn"};

    explicit SessionBus(const QString &name);
    ~SessionBus() override;

    [[nodiscard]] Claim claim(ApplicationRequests &requests) override;
    void release() override;
    void activate(Answer answer) override;
    void open(const QStringList &addresses, Answer answer) override;
    void run(const QStringList &words, std::chrono::milliseconds patience, Answer answer) override;

private:
    class Parts;
    std::unique_ptr<Parts> m_parts;
};

} // namespace velmo
