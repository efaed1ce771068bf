#pragma once

#include "base/interface.h"

namespace velmo {

/// Sends the lists that a person edits to their account. Main thread; returns at once, a failure is only logged.
/// Called after a change was stored, while somebody is signed in.
class ListPushes : public Interface {
public:
    virtual void pushDictionary() = 0;
    virtual void pushSnippets() = 0;
};

} // namespace velmo
