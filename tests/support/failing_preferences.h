#pragma once

#include "store/memory_preferences.h"

#include <atomic>

namespace velmo::testing {

/// A preference domain on a disk that can fail.
class FailingPreferences final : public Preferences {
public:
    [[nodiscard]] Result<std::optional<PreferenceValue>, PreferencesFailure>
    read(const QString &key) const override {
        if (unreadable)
            return failed(PreferencesFailure{QStringLiteral("disk I/O error")});
        return m_stored.read(key);
    }
    [[nodiscard]] std::optional<PreferenceValue> value(const QString &key) const override {
        return unreadable ? std::nullopt : m_stored.value(key);
    }
    [[nodiscard]] std::map<QString, PreferenceValue> all() const override { return m_stored.all(); }
    bool change(const QString &key, const Change &change) override {
        return !full && !unreadable && m_stored.change(key, change);
    }

    std::atomic<bool> full = false; ///< What is stored can still be read.
    std::atomic<bool> unreadable = false;

private:
    MemoryPreferences m_stored;
};

} // namespace velmo::testing
