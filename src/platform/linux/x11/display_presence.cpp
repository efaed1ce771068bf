#include "platform/linux/x11/display_presence.h"

#include "platform/linux/x11/server/connection.h"

namespace velmo {

bool hasX11Display() {
    return x11::Connection::open({}).has_value();
}

} // namespace velmo
