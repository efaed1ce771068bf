#pragma once

#include <chrono>
#include <functional>

namespace velmo::testing {

/// Waits, with the event loop running, until the condition holds; false when it does not within a time that
/// is long even on a busy machine.
[[nodiscard]] bool waitUntil(const std::function<bool()> &condition,
                             std::chrono::milliseconds limit = std::chrono::seconds(30));

} // namespace velmo::testing
