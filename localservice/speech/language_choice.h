#pragma once

#include <QString>
#include <mutex>
#include <optional>

namespace velmo::localservice {

/// The language in which a recording is written, from when an engine has chosen it. Any thread.
class LanguageChoice {
public:
    [[nodiscard]] std::optional<QString> language() const {
        const std::lock_guard lock(m_mutex);
        return m_language;
    }

    /// The first choice stays.
    void choose(const QString &language) {
        const std::lock_guard lock(m_mutex);
        if (!m_language)
            m_language = language;
    }

private:
    mutable std::mutex m_mutex;
    std::optional<QString> m_language;
};

} // namespace velmo::localservice
