#pragma once

#include <string>

namespace velmo::localservice {

/// Whether a Host header ("127.0.0.1:18650", "[::1]", "localhost") names this machine: a loopback address,
/// "localhost", the machine's own name, or the address at which the connection arrived. A page of a foreign
/// site can make a browser send requests here under a name of its own that it lets point to this machine (DNS
/// rebinding); the name then gives it away.
[[nodiscard]] bool namesThisMachine(const std::string &host, const std::string &localAddress);

/// The same for an Origin header ("http://localhost:3000"), which browsers send along with what a page asks
/// for. "null" and schemes other than http and https are foreign.
[[nodiscard]] bool isOriginOfThisMachine(const std::string &origin, const std::string &localAddress);

/// Whether the numeric address of a peer is a loopback address, also in the form that a socket for both versions of
/// the protocol shows ("::ffff:127.0.0.1").
[[nodiscard]] bool isLoopbackAddress(const std::string &address);

} // namespace velmo::localservice
