#pragma once

#include "base/interface.h"

#include <functional>

namespace velmo {

/// Whether the desktop asks its applications for less motion. Main thread.
class MotionPreference : public Interface {
public:
    /// Answers from what is known already.
    [[nodiscard]] virtual bool isReduced() const = 0;

    /// Told, as a task of the main queue, when the answer may be another one. Replaces the handler.
    virtual void setChangeHandler(std::function<void()> changed) = 0;
};

} // namespace velmo
