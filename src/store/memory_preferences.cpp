#include "store/memory_preferences.h"

namespace velmo {

std::optional<PreferenceValue> MemoryPreferences::value(const QString &key) const {
    const std::lock_guard lock(m_mutex);
    const auto found = m_values.find(key);
    if (found == m_values.end())
        return std::nullopt;
    return found->second;
}

std::map<QString, PreferenceValue> MemoryPreferences::all() const {
    const std::lock_guard lock(m_mutex);
    return m_values;
}

bool MemoryPreferences::change(const QString &key, const Change &change) {
    const std::lock_guard lock(m_mutex);
    const auto found = m_values.find(key);
    auto changed = change(found == m_values.end() ? std::nullopt : std::optional(found->second));
    if (changed)
        m_values.insert_or_assign(key, std::move(*changed));
    else
        m_values.erase(key);
    return true;
}

} // namespace velmo
