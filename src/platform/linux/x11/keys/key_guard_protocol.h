#pragma once

#include <cstdint>

/// What Velmo and its key guard tell each other, one datagram each, over a socket that is the guard's
/// standard input. The guard ends when the socket is closed. Both are built together, so the form may change
/// at will.
namespace velmo::keyguard {

enum class Kind : uint32_t {
    Watch,    ///< To the guard: from now on `keycode` is grabbed by the client that owns `resource`.
    Watching, ///< The answer: the grab is safe now.
    Ping,     ///< From the guard: the server may be holding the keyboard for you. Are you there?
    Pong,     ///< The answer.
};

struct Message {
    Kind kind;
    uint32_t keycode = 0;
    uint32_t resource = 0;
};

/// How long the server may hold the keyboard before the guard takes the grab away: long enough for a busy
/// machine, short enough that a person sees a hitch and not a dead keyboard. Nothing typed meanwhile is lost.
inline constexpr int kPatienceMs = 500;

} // namespace velmo::keyguard
