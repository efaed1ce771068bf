// The key guard: sees to it that the person's keyboard never stays frozen.
//
// Velmo grabs its trigger key synchronously: the X server holds the keyboard until Velmo has said what
// becomes of a press. Should Velmo be stopped or hang just then, nobody could type any more, and no timer
// within Velmo can help. So this small program, in a session of its own, watches the same key. Whenever the
// server may have begun to wait for Velmo it asks whether Velmo is there, and when no answer comes it
// disconnects Velmo's grabbing connection. The server then frees the keyboard and delivers what was typed
// meanwhile. Velmo takes the key again when it goes on.

#include "platform/linux/x11/keys/key_guard_protocol.h"

#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <memory>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <unistd.h>
#include <xcb/xcb.h>
#include <xcb/xinput.h>

namespace {

using namespace velmo::keyguard;
using Clock = std::chrono::steady_clock;
constexpr auto kNever = Clock::time_point::max();

class KeyGuard {
public:
    explicit KeyGuard(xcb_connection_t *xcb) : m_xcb(xcb) {}

    /// Listens for keys everywhere, even under grabs. False when the server cannot report them.
    bool listen();
    /// Returns when Velmo or the server has gone.
    void run();

private:
    bool receive();
    void handle(const Message &message);
    void send(Kind kind);
    void handleEvents();
    void keyMoved(uint32_t keycode, bool isPress);
    void askWhetherVelmoIsThere();
    void freeKeyboardWhenDue();
    [[nodiscard]] int millisecondsToDeadline() const;

    xcb_connection_t *m_xcb;
    uint8_t m_inputOpcode = 0;
    uint32_t m_keycode = 0;
    uint32_t m_resource = 0; ///< 0 while Velmo grabs nothing.
    bool m_isKeyDown = false;
    Clock::time_point m_deadline = kNever; ///< Of the answer to a ping.
};

bool KeyGuard::listen() {
    const auto *extension = xcb_get_extension_data(m_xcb, &xcb_input_id);
    if (!extension || !extension->present)
        return false;
    m_inputOpcode = extension->major_opcode;
    // Version 2.1 is the first to report keys under grabs of others.
    std::free(xcb_input_xi_query_version_reply(m_xcb, xcb_input_xi_query_version(m_xcb, 2, 1), nullptr));
    struct {
        xcb_input_event_mask_t header;
        uint32_t mask;
    } const selection{{XCB_INPUT_DEVICE_ALL_MASTER, 1},
                      XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS | XCB_INPUT_XI_EVENT_MASK_RAW_KEY_RELEASE};
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(m_xcb)).data->root;
    const auto cookie = xcb_input_xi_select_events_checked(m_xcb, root, 1, &selection.header);
    xcb_generic_error_t *error = xcb_request_check(m_xcb, cookie);
    std::free(error);
    return !error;
}

void KeyGuard::run() {
    for (;;) {
        handleEvents();
        xcb_flush(m_xcb);
        pollfd sources[] = {{STDIN_FILENO, POLLIN, 0}, {xcb_get_file_descriptor(m_xcb), POLLIN, 0}};
        poll(sources, std::size(sources), millisecondsToDeadline());
        // Answers first: after a pause of this process an answer may wait beside the deadline.
        if ((sources[0].revents != 0 && !receive()) || xcb_connection_has_error(m_xcb))
            return;
        freeKeyboardWhenDue();
    }
}

/// False once Velmo has gone.
bool KeyGuard::receive() {
    for (;;) {
        Message message{};
        const ssize_t size = recv(STDIN_FILENO, &message, sizeof message, MSG_DONTWAIT);
        if (size != sizeof message)
            return size < 0 && (errno == EAGAIN || errno == EINTR);
        handle(message);
    }
}

void KeyGuard::handle(const Message &message) {
    switch (message.kind) {
    case Kind::Watch:
        m_keycode = message.keycode;
        m_resource = message.resource;
        m_isKeyDown = false;
        send(Kind::Watching);
        break;
    case Kind::Pong:
        m_deadline = kNever;
        break;
    case Kind::Watching:
    case Kind::Ping:
        break;
    }
}

void KeyGuard::send(Kind kind) {
    const Message message{kind, m_keycode, m_resource};
    (void)::send(STDIN_FILENO, &message, sizeof message, MSG_DONTWAIT | MSG_NOSIGNAL);
}

void KeyGuard::handleEvents() {
    while (const auto event = std::unique_ptr<xcb_generic_event_t, decltype(&std::free)>(
               xcb_poll_for_event(m_xcb), &std::free)) {
        const auto *generic = reinterpret_cast<const xcb_ge_generic_event_t *>(event.get());
        if ((event->response_type & 0x7f) != XCB_GE_GENERIC || generic->extension != m_inputOpcode)
            continue;
        const auto *key = reinterpret_cast<const xcb_input_raw_key_press_event_t *>(event.get());
        keyMoved(key->detail, generic->event_type == XCB_INPUT_RAW_KEY_PRESS);
    }
}

/// The server waits for Velmo at a press of the grabbed key and, while that is held, at every other key.
void KeyGuard::keyMoved(uint32_t keycode, bool isPress) {
    const bool wasDown = m_isKeyDown;
    if (keycode == m_keycode)
        m_isKeyDown = isPress;
    if (wasDown || m_isKeyDown)
        askWhetherVelmoIsThere();
}

void KeyGuard::askWhetherVelmoIsThere() {
    if (m_resource == 0 || m_deadline != kNever)
        return;
    m_deadline = Clock::now() + std::chrono::milliseconds(kPatienceMs);
    send(Kind::Ping);
}

void KeyGuard::freeKeyboardWhenDue() {
    if (Clock::now() < m_deadline)
        return;
    m_deadline = kNever;
    xcb_kill_client(m_xcb, m_resource);
    xcb_flush(m_xcb);
    m_resource = 0;
}

int KeyGuard::millisecondsToDeadline() const {
    if (m_deadline == kNever)
        return -1;
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(m_deadline - Clock::now());
    return left.count() > 0 ? static_cast<int>(left.count()) : 0;
}

} // namespace

/// Started by Velmo alone: the display as the argument, the socket as standard input.
int main(int argc, char **argv) {
    // A signal sent to "velmo" by name, to stop it, must not stop its guard.
    prctl(PR_SET_NAME, "key-guard");
    xcb_connection_t *xcb = xcb_connect(argc > 1 && *argv[1] ? argv[1] : nullptr, nullptr);
    int status = EXIT_FAILURE;
    if (!xcb_connection_has_error(xcb)) {
        KeyGuard guard(xcb);
        if (guard.listen()) {
            guard.run();
            status = EXIT_SUCCESS;
        }
    }
    xcb_disconnect(xcb);
    return status;
}
