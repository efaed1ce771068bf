#pragma once

#include "base/interface.h"
#include "localservice/http/server.h"

#include <QJsonObject>
#include <httplib.h>
#include <thread>
#include <vector>

namespace velmo::localservice::testing {

/// A server on a free port of this machine for as long as it lives.
class RunningServer : private Unmovable {
public:
    explicit RunningServer(const std::vector<Endpoint> &endpoints, const ServerLimits &limits = {});
    ~RunningServer();

    [[nodiscard]] int port() const { return m_port; }
    [[nodiscard]] httplib::Client client() const { return httplib::Client("127.0.0.1", m_port); }

    /// Returns once all requests under way have been answered.
    void stop();

private:
    Server m_server;
    int m_port;
    std::thread m_thread;
};

/// The JSON object of a reply.
[[nodiscard]] QJsonObject objectOf(const httplib::Response &response);

/// The "error" of a reply.
[[nodiscard]] QString errorOf(const httplib::Response &response);

} // namespace velmo::localservice::testing
