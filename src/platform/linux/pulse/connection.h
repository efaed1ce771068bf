#pragma once

#include "base/interface.h"

#include <memory>
#include <pulse/context.h>
#include <pulse/thread-mainloop.h>
#include <vector>

namespace velmo::pulse {

/// The process's one connection to the sound server (PulseAudio, or PipeWire in its place), with libpulse's thread
/// that serves it. It is made when a client first needs it and again after it broke; at rest the thread sleeps. No
/// server is ever started.
class Connection : private Unmovable {
public:
    /// Whoever needs the connection. Both operations are called under the lock, on libpulse's thread or from within
    /// `join`.
    class Client : private Unmovable {
    public:
        /// The connection stands.
        virtual void connected(pa_context *context) = 0;
        /// It could not be made or is gone, for libpulse's reason; the client has left and may join again.
        virtual void disconnected(int error) = 0;

    protected:
        ~Client() = default;
    };

    /// Holds libpulse's thread still: all that is libpulse's, and all that its callbacks touch, is touched under the
    /// lock. The callbacks run under it already. It is held for microseconds, never while waiting for the server.
    class Lock : private Unmovable {
    public:
        explicit Lock(Connection &connection) : m_loop(connection.m_loop.get()) {
            pa_threaded_mainloop_lock(m_loop);
        }
        ~Lock() { pa_threaded_mainloop_unlock(m_loop); }

    private:
        pa_threaded_mainloop *m_loop;
    };

    Connection();
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
