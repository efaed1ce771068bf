#pragma once

#include "base/result.h"

#include <QString>

namespace velmo {

/// Where the service is: a scheme, a host and perhaps a port, and nothing more. Addresses of requests are
/// this text with the path of their endpoint behind it, so they are addresses too.
class ServiceOrigin {
public:
    /// Takes "https://velmo.example", "https://velmo.example:8443/" (one trailing slash is dropped) and, for
    /// this machine alone, "http://127.0.0.1:18650". Not "velmo.example" (no scheme), "http://velmo.example"
    /// (would carry speech in the open), "https://velmo.example/api" (a path).
    /// @return the origin, or a sentence that names the piece at fault without repeating secrets.
    [[nodiscard]] static Result<ServiceOrigin, QString> parse(const QString &text);

    /// The one this run talks to: the environment's VELMO_SERVICE_URL unless it is unset or empty, then the
    /// build's VELMO_SERVICE_ORIGIN.
    [[nodiscard]] static Result<ServiceOrigin, QString> ofThisRun();

    /// Without a trailing slash.
    [[nodiscard]] const QString &baseURL() const { return m_baseURL; }

    /// Whether requests stay on this machine.
    [[nodiscard]] bool isThisMachine() const { return m_isThisMachine; }

private:
    ServiceOrigin(QString baseURL, bool isThisMachine)
        : m_baseURL(std::move(baseURL)), m_isThisMachine(isThisMachine) {}

    QString m_baseURL;
    bool m_isThisMachine;
};

} // namespace velmo
