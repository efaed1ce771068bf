#include "store/preference_watch.h"

namespace velmo {

PreferenceWatch::PreferenceWatch(const Preferences &preferences, MainQueue &queue)
    : m_preferences(preferences), m_queue(queue) {}

void PreferenceWatch::follow(const QString &key, const QObject *context, std::function<void()> callback) {
    m_seen.try_emplace(key, m_preferences.value(key));
    connect(this, &PreferenceWatch::changed, context,
            [key, callback = std::move(callback)](const QString &changedKey) {
                if (changedKey == key)
                    callback();
            });
}

void PreferenceWatch::noteWrite() {
    if (!m_willLook.exchange(true))
        m_queue.post(m_lifetime.guard([this] { look(); }));
}

void PreferenceWatch::look() {
    m_willLook = false; // before the reading: what is written from here on is looked at again
    QStringList changedKeys;
    for (auto &[key, seen] : m_seen) {
        auto value = m_preferences.value(key);
        if (value == seen)
            continue;
        seen = std::move(value);
        changedKeys.append(key);
    }
    for (const QString &key : changedKeys)
        Q_EMIT changed(key);
}

} // namespace velmo
