#pragma once

#include "base/interface.h"
#include "base/result.h"

#include <QString>

namespace velmo {

/// Whether the desktop starts Velmo when the person logs in. Main thread.
class LoginItem : public Interface {
public:
    [[nodiscard]] virtual bool isEnabled() const = 0;

    /// The failure is a sentence for the person; nothing has changed then.
    [[nodiscard]] virtual Result<void, QString> setEnabled(bool enabled) = 0;
};

} // namespace velmo
