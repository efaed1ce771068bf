#include "service/wire/transcription_error.h"

namespace velmo {

TranscriptionError TranscriptionError::networkError(QString message) {
    TranscriptionError error(Case::networkError);
    error.m_message = std::move(message);
    return error;
}

TranscriptionError TranscriptionError::serverError(int status, std::optional<QString> message) {
    TranscriptionError error(Case::serverError);
    error.m_status = status;
    error.m_message = std::move(message);
    return error;
}

TranscriptionError TranscriptionError::fileNotFound() {
    return TranscriptionError(Case::fileNotFound);
}

TranscriptionError TranscriptionError::fileTooSmall() {
    return TranscriptionError(Case::fileTooSmall);
}

TranscriptionError TranscriptionError::invalidResponse() {
    return TranscriptionError(Case::invalidResponse);
}

TranscriptionError TranscriptionError::timeout() {
    return TranscriptionError(Case::timeout);
}

QString TranscriptionError::localizedDescription() const {
    switch (m_case) {
    case Case::networkError:
        return QStringLiteral("Network error: %1").arg(m_message.value_or(QString()));
    case Case::serverError:
        return QStringLiteral("Server error %1: %2")
            .arg(QString::number(m_status), m_message.value_or(QStringLiteral("unknown")));
    case Case::fileNotFound:
        return QStringLiteral("Recording file not found");
    case Case::fileTooSmall:
        return QStringLiteral("Recording too short");
    case Case::invalidResponse:
        return QStringLiteral("Invalid server response");
    case Case::timeout:
        return QStringLiteral("Request timed out");
    }
    return {};
}

} // namespace velmo
