#pragma once

#include <QString>

namespace velmo {

/// Puts text at the cursor of whatever application has focus.
class TextInsertion {
public:
    TextInsertion() = default;
    TextInsertion(const TextInsertion &) = delete;
    TextInsertion &operator=(const TextInsertion &) = delete;
    virtual ~TextInsertion() = default;

    /// Main thread; returns at once.
    virtual void insert(const QString &text) = 0;
};

} // namespace velmo
