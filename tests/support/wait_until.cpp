#include "support/wait_until.h"

#include <QCoreApplication>
#include <thread>

using namespace std::chrono_literals;

namespace velmo::testing {

bool waitUntil(const std::function<bool()> &condition, std::chrono::milliseconds limit) {
    const auto end = std::chrono::steady_clock::now() + limit;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end)
            return false;
        QCoreApplication::processEvents();
        std::this_thread::sleep_for(2ms);
    }
    return true;
}

} // namespace velmo::testing
