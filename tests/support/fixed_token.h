#pragma once

#include "service/wire/session_interfaces.h"

#include <thread>

namespace velmo::testing {

/// A session whose token is what the test says.
struct FixedToken final : TokenSource {
    [[nodiscard]] std::optional<QString> authToken() override {
        thread = std::this_thread::get_id();
        return token;
    }
    void prepareToken() override { ++prepared; }

    std::optional<QString> token;
    std::thread::id thread; ///< Which asked last.
    int prepared = 0;
};

} // namespace velmo::testing
