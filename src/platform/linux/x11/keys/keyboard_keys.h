#pragma once

#include "platform/linux/x11/server/desktop_watch.h"
#include "platform/linux/xkb/trigger_keys.h"

namespace velmo::x11 {

class Keys final : public xkb::TriggerKeys {
public:
    /// `watch` may be null: then no key of an event is known.
    explicit Keys(std::shared_ptr<DesktopWatch> watch) : m_watch(std::move(watch)) {}

    [[nodiscard]] PhysicalKey keyAt(quint32 scanCode) const override;

private:
    std::shared_ptr<DesktopWatch> m_watch;
};

} // namespace velmo::x11
