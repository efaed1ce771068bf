#include "localservice/http/running_server.h"

#include <QJsonDocument>

using namespace Qt::StringLiterals;

namespace velmo::localservice::testing {

RunningServer::RunningServer(const std::vector<Endpoint> &endpoints, const ServerLimits &limits)
    : m_server(limits) {
    for (const Endpoint &endpoint : endpoints)
        m_server.add(endpoint);
    m_port = m_server.bind(u"127.0.0.1"_s, 0).value_or(0);
    m_thread = std::thread([this] { m_server.run(); });
}

RunningServer::~RunningServer() {
    stop();
}

void RunningServer::stop() {
    if (!m_thread.joinable())
        return;
    m_server.stop();
    m_thread.join();
}

QJsonObject objectOf(const httplib::Response &response) {
    return QJsonDocument::fromJson(QByteArray::fromStdString(response.body)).object();
}

QString errorOf(const httplib::Response &response) {
    return objectOf(response).value(u"error"_s).toString();
}

} // namespace velmo::localservice::testing
