#include "platform/linux/pulse/connection.h"

#include <algorithm>
#include <pulse/error.h>
#include <utility>

namespace velmo::pulse {

void Connection::CloseContext::operator()(pa_context *context) const {
    pa_context_set_state_callback(context, nullptr, nullptr);
    pa_context_disconnect(context);
    pa_context_unref(context);
}

Connection::Connection() : m_loop(pa_threaded_mainloop_new()) {
    pa_threaded_mainloop_set_name(m_loop.get(), "velmo-pulse");
    pa_threaded_mainloop_start(m_loop.get());
}

Connection::~Connection() {
    {
        const Lock lock(*this);
        m_context.reset();
    }
    pa_threaded_mainloop_stop(m_loop.get());
}

void Connection::join(Client &client) {
    m_clients.push_back(&client);
    if (!m_context)
        connect();
    else if (pa_context_get_state(m_context.get()) == PA_CONTEXT_READY)
        client.connected(m_context.get());
}

void Connection::leave(Client &client) {
    std::erase(m_clients, &client);
}

void Connection::connect() {
    m_context.reset(pa_context_new(pa_threaded_mainloop_get_api(m_loop.get()), "Velmo"));
    pa_context_set_state_callback(m_context.get(), &Connection::stateChanged, this);
    if (pa_context_connect(m_context.get(), nullptr, PA_CONTEXT_NOAUTOSPAWN, nullptr) < 0)
        tellDisconnected(pa_context_errno(m_context.get()));
}

void Connection::stateChanged(pa_context *context, void *connection) {
    auto &self = *static_cast<Connection *>(connection);
    const pa_context_state_t state = pa_context_get_state(context);
    if (state == PA_CONTEXT_READY)
        self.tellConnected();
    else if (!PA_CONTEXT_IS_GOOD(state))
        self.tellDisconnected(pa_context_errno(context));
}

void Connection::tellConnected() {
    const auto clients = m_clients;
    for (Client *client : clients)
        client->connected(m_context.get());
}

void Connection::tellDisconnected(int error) {
    // The context stays until the clients have let go of what they had of it; those that join again begin a new one.
    const auto gone = std::exchange(m_context, nullptr);
    const auto clients = std::exchange(m_clients, {});
    if (gone)
        pa_context_set_state_callback(gone.get(), nullptr, nullptr);
    for (Client *client : clients)
        client->disconnected(error);
}

} // namespace velmo::pulse
