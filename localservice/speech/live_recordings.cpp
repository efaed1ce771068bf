#include "localservice/speech/live_recordings.h"

#include "localservice/speech/speech_session.h"

namespace velmo::localservice {

void LiveRecordings::add(const QByteArray &upload, const std::shared_ptr<SpeechSession> &session) {
    const std::lock_guard lock(m_mutex);
    std::erase_if(m_sessions, [](const auto &entry) { return entry.second.expired(); });
    m_sessions[upload] = session;
}

std::optional<QString> LiveRecordings::wordsOf(const QByteArray &upload) {
    std::shared_ptr<SpeechSession> session;
    {
        const std::lock_guard lock(m_mutex);
        const auto found = m_sessions.find(upload);
        session = found == m_sessions.end() ? nullptr : found->second.lock();
    }
    return session ? std::optional(session->partialText()) : std::nullopt;
}

} // namespace velmo::localservice
