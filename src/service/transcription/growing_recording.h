#pragma once

#include "service/http/http_message.h"

#include <QByteArray>
#include <QFile>
#include <atomic>
#include <memory>

namespace velmo {

/// The body of an upload whose recording is still being written: a text before, what the file holds, a text behind. It
/// reads what the recorder has written, so the service gets the bytes of the file, whatever becomes of it. `finish` and
/// `abandon` on any thread, the rest on the HTTP client's.
class GrowingRecording final : public GrowingBody {
public:
    /// The file is open for reading; nothing of it is sent before its header is complete.
    GrowingRecording(QByteArray start, std::unique_ptr<QFile> file, QByteArray end)
        : m_start(std::move(start)), m_file(std::move(file)), m_end(std::move(end)) {}

    /// The recording is complete.
    void finish() { m_wholeSince = std::chrono::steady_clock::now(); }
    void abandon() { m_isAbandoned = true; }

    [[nodiscard]] qsizetype read(char *into, qsizetype most) override;
    [[nodiscard]] std::optional<std::chrono::steady_clock::time_point> wholeSince() const override;
    [[nodiscard]] bool isAbandoned() const override { return m_isAbandoned; }

private:
    using Moment = std::chrono::steady_clock::time_point;

    QByteArray m_start; ///< What is left of it.
    const std::unique_ptr<QFile> m_file;
    QByteArray m_end; ///< What is left of it.
    std::atomic<Moment> m_wholeSince = Moment();
    std::atomic<bool> m_isAbandoned = false;
};

} // namespace velmo
