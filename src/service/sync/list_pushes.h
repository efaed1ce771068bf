#pragma once

namespace velmo {

/// Sends the lists that a person edits to their account. Main thread; returns at once, a failure is only logged.
/// Called after a change was stored, while somebody is signed in.
class ListPushes {
public:
    ListPushes() = default;
    ListPushes(const ListPushes &) = delete;
    ListPushes &operator=(const ListPushes &) = delete;
    virtual ~ListPushes() = default;

    virtual void pushDictionary() = 0;
    virtual void pushSnippets() = 0;
};

} // namespace velmo
