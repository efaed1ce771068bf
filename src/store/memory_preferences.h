#pragma once

#include "store/preferences.h"

#include <mutex>

namespace velmo {

/// A preference domain that ends with the object: for one line of text with preferences of its own, and for
/// tests.
class MemoryPreferences final : public Preferences {
public:
    MemoryPreferences() = default;
    explicit MemoryPreferences(std::map<QString, PreferenceValue> values) : m_values(std::move(values)) {}

    [[nodiscard]] Result<std::optional<PreferenceValue>, PreferencesFailure>
    read(const QString &key) const override {
        return value(key);
    }
    [[nodiscard]] std::optional<PreferenceValue> value(const QString &key) const override;
    [[nodiscard]] std::map<QString, PreferenceValue> all() const override;
    bool change(const QString &key, const Change &change) override;

private:
    std::mutex m_changeMutex;   // one change at a time
    mutable std::mutex m_mutex; // of the values, which a change may read
    std::map<QString, PreferenceValue> m_values;
};

} // namespace velmo
