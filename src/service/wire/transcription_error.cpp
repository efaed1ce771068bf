#include "service/wire/transcription_error.h"

using namespace Qt::StringLiterals;

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
        return u"Network error: %1"_s.arg(m_message.value_or(QString()));
    case Case::serverError:
        return u"Server error %1: %2"_s.arg(QString::number(m_status), m_message.value_or(u"unknown"_s));
    case Case::fileNotFound:
        return u"Recording file not found"_s;
    case Case::fileTooSmall:
        return u"Recording too short"_s;
    case Case::invalidResponse:
        return u"Invalid server response"_s;
    case Case::timeout:
        return u"Request timed out"_s;
    }
    return {};
}

} // namespace velmo
