#pragma once

#include "base/interface.h"

#include <QByteArray>
#include <QString>
#include <map>
#include <memory>
#include <mutex>
#include <optional>

namespace velmo::localservice {

class SpeechSession;

/// The recordings that are being made, by the names that their uploads have. Any thread.
class LiveRecordings : private Unmovable {
public:
    void add(const QByteArray &upload, const std::shared_ptr<SpeechSession> &session);

    /// What has been heard of it so far; nothing when there is no such recording, or none any more.
    [[nodiscard]] std::optional<QString> wordsOf(const QByteArray &upload);

private:
    std::mutex m_mutex;
    std::map<QByteArray, std::weak_ptr<SpeechSession>> m_sessions;
};

} // namespace velmo::localservice
