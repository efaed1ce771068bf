#pragma once

#include "base/interface.h"

#include <glib.h>

namespace velmo {

/// The main context of this thread while one call to the keyring lasts. An object of GLib leaves part of what it must
/// free to the context it was made in, some of it only after the object's end; in the main thread's context that is
/// lost with the process, in this one the call, or a later one, frees it.
class CallContext : private Unmovable {
public:
    CallContext();
    ~CallContext();

private:
    GMainContext *m_context;
};

} // namespace velmo
