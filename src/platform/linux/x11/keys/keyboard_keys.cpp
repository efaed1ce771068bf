#include "platform/linux/x11/keys/keyboard_keys.h"

namespace velmo::x11 {

PhysicalKey Keys::keyAt(quint32 scanCode) const {
    QString name;
    xkb_keysym_t symbol = XKB_KEY_NoSymbol;
    if (m_watch)
        m_watch->run([&] {
            name = m_watch->keyboard().nameOf(scanCode);
            symbol = m_watch->keyboard().symbolOf(scanCode);
        });
    return {name, xkb::refusalOfTriggerKey(name, symbol)};
}

} // namespace velmo::x11
