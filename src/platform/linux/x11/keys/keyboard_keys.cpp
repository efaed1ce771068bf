#include "platform/linux/x11/keys/keyboard_keys.h"

namespace velmo::x11 {

std::optional<PhysicalKey> Keys::keyAt(quint32 scanCode) const {
    PhysicalKey key;
    if (m_watch)
        m_watch->run([&] {
            key = {m_watch->keyboard().nameOf(scanCode), m_watch->keyboard().symbolOf(scanCode)};
        });
    return key.name.isEmpty() ? std::nullopt : std::optional(key);
}

} // namespace velmo::x11
