#pragma once

#include "platform/keyboard_keys.h"
#include "platform/linux/x11/server/desktop_watch.h"

namespace velmo::x11 {

class Keys final : public KeyboardKeys {
public:
    /// `watch` may be null: then no key is known.
    explicit Keys(std::shared_ptr<DesktopWatch> watch) : m_watch(std::move(watch)) {}

    [[nodiscard]] std::optional<PhysicalKey> keyAt(quint32 scanCode) const override;

private:
    std::shared_ptr<DesktopWatch> m_watch;
};

} // namespace velmo::x11
