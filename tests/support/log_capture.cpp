#include "support/log_capture.h"

#include "base/log.h"

namespace velmo::testing {

LogCapture::LogCapture() {
    setLogSink([this](const QString &line) {
        const std::lock_guard lock(m_mutex);
        m_lines.append(line);
    });
}

LogCapture::~LogCapture() {
    setLogSink({});
}

QStringList LogCapture::lines() const {
    const std::lock_guard lock(m_mutex);
    return m_lines;
}

void LogCapture::clear() {
    const std::lock_guard lock(m_mutex);
    m_lines.clear();
}

} // namespace velmo::testing
