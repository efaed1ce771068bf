#pragma once

#include "base/interface.h"

#include <QString>

namespace velmo {

/// Puts text at the cursor of whatever application has focus.
class TextInsertion : public Interface {
public:
    /// Main thread; returns at once.
    virtual void insert(const QString &text) = 0;
};

} // namespace velmo
