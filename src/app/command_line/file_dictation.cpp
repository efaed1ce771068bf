#include "app/command_line/file_dictation.h"

namespace velmo {

namespace {

/// What a file of unknown length counts as while it is dictated: long enough not to be taken for a slip of the finger.
constexpr double kUnknownLengthSeconds = 1;

} // namespace

void ShiftedClock::releaseAfter(std::chrono::duration<double> held) {
    const Date moment = now() + std::chrono::duration_cast<Date::duration>(held);
    m_held.reset();
    m_ahead = moment - m_real.now();
}

void FileRecorder::setFile(const QString &path, std::optional<double> seconds) {
    m_path = path;
    m_seconds = seconds;
}

Result<QString, RecordingFailure> FileRecorder::startRecording() {
    m_clock.hold();
    return m_path;
}

std::optional<QString> FileRecorder::stopRecording() {
    m_clock.releaseAfter(std::chrono::duration<double>(m_seconds.value_or(kUnknownLengthSeconds)));
    return m_path;
}

} // namespace velmo
