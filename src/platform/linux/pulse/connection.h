#pragma once

#include <memory>
#include <pulse/context.h>
#include <pulse/thread-mainloop.h>
#include <vector>

namespace velmo::pulse {

/// The process's one connection to the sound server (PulseAudio, or PipeWire in its place), with libpulse's thread
/// that serves it. It is made when a client first needs it and again after it broke; at rest the thread sleeps. No
/// server is ever started.
class Connection {
public:
    /// Whoever needs the connection. Both operations are called under the lock, on libpulse's thread or from within
    /// `join`.
    class Client {
    public:
        Client() = default;
        Client(const Client &) = delete;
        Client &operator=(const Client &) = delete;

        /// The connection stands.
        virtual void connected(pa_context *context) = 0;
        /// It could not be made or is gone, for libpulse's reason; the client has left and may join again.
        virtual void disconnected(int error) = 0;

    protected:
        ~Client() = default;
    };

    /// Holds libpulse's thread still: all that is libpulse's, and all that its callbacks touch, is touched under the
    /// lock. The callbacks run under it already. It is held for microseconds, never while waiting for the server.
    class Lock {
    public:
        explicit Lock(Connection &connection) : m_loop(connection.m_loop.get()) {
            pa_threaded_mainloop_lock(m_loop);
        }
        Lock(const Lock &) = delete;
        Lock &operator=(const Lock &) = delete;
        ~Lock() { pa_threaded_mainloop_unlock(m_loop); }

    private:
        pa_threaded_mainloop *m_loop;
    };

    Connection();
    Connection(const Connection &) = delete;
    Connection &operator=(const Connection &) = delete;
    ~Connection();

    /// Under the lock.
    void join(Client &client);
    void leave(Client &client);

private:
    struct FreeLoop {
        void operator()(pa_threaded_mainloop *loop) const { pa_threaded_mainloop_free(loop); }
    };
    struct CloseContext {
        void operator()(pa_context *context) const;
    };

    static void stateChanged(pa_context *context, void *connection);
    void connect();
    void tellConnected();
    void tellDisconnected(int error);

    std::unique_ptr<pa_threaded_mainloop, FreeLoop> m_loop;
    std::unique_ptr<pa_context, CloseContext> m_context; ///< None when not connected.
    std::vector<Client *> m_clients;
};

} // namespace velmo::pulse
