#include "platform/linux/x11/keys/keyboard_keys.h"

#include <limits>

namespace velmo::x11 {

std::optional<PhysicalKey> Keys::keyAt(quint32 scanCode) const {
    std::optional<PhysicalKey> key;
    if (m_watch && scanCode <= std::numeric_limits<xcb_keycode_t>::max())
        m_watch->run([&] { key = m_watch->keyboard().keyAt(static_cast<xcb_keycode_t>(scanCode)); });
    return key;
}

} // namespace velmo::x11
