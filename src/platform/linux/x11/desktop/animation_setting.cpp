#include "platform/linux/x11/desktop/animation_setting.h"

#include "platform/linux/x11/desktop/x_settings.h"

namespace velmo::x11 {

AnimationSetting::AnimationSetting(MainQueue &queue, std::shared_ptr<DesktopWatch> watch)
    : m_queue(queue), m_watch(std::move(watch)) {
    if (!m_watch)
        return;
    m_watch->run([this] {
        m_watch->add(this);
        settingsChanged();
    });
}

AnimationSetting::~AnimationSetting() {
    if (m_watch)
        m_watch->run([this] { m_watch->remove(this); });
}

void AnimationSetting::settingsChanged() {
    const bool isReduced = integerSetting(m_watch->settings(), "Gtk/EnableAnimations") == 0;
    if (m_isReduced.exchange(isReduced) == isReduced)
        return;
    m_queue.post(m_lifetime.guard([this] {
        if (m_changed)
            m_changed();
    }));
}

} // namespace velmo::x11
