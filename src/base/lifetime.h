#pragma once

#include <memory>
#include <utility>

namespace velmo {

/// Lets deferred work hold its owner weakly. A class that hands out callbacks owns one Lifetime; a guarded
/// callback does nothing once the owner is gone. The owner must be destroyed on the thread that runs its
/// guarded callbacks (the main thread), otherwise the check would race with the destruction.
class Lifetime {
public:
    /// Wraps a callback (returning nothing) so that it is skipped after the owner's end.
    template <class Callback>
    [[nodiscard]] auto guard(Callback callback) const {
        return [owner = std::weak_ptr(m_token), callback = std::move(callback)](auto &&...arguments) mutable {
            if (!owner.expired())
                callback(std::forward<decltype(arguments)>(arguments)...);
        };
    }

private:
    std::shared_ptr<const void> m_token = std::make_shared<char>();
};

} // namespace velmo
