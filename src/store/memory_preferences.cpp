#include "store/memory_preferences.h"

#include "base/utf8.h"

namespace velmo {

namespace {

/// As it comes back from a file, which holds strings as UTF-8.
PreferenceValue asStored(PreferenceValue value) {
    if (auto *text = std::get_if<QString>(&value))
        *text = wellFormed(*text);
    return value;
}

} // namespace

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
    const std::lock_guard changing(m_changeMutex);
    auto changed = change(value(key));
    const std::lock_guard lock(m_mutex);
    if (changed)
        m_values.insert_or_assign(key, asStored(std::move(*changed)));
    else
        m_values.erase(key);
    return true;
}

} // namespace velmo
