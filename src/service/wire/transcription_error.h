#pragma once

#include <QString>
#include <optional>

namespace velmo {

/// Why a recording gave no transcript.
class TranscriptionError {
public:
    enum class Case { networkError, serverError, fileNotFound, fileTooSmall, invalidResponse, timeout };

    [[nodiscard]] static TranscriptionError networkError(QString message);
    [[nodiscard]] static TranscriptionError serverError(int status, std::optional<QString> message);
    [[nodiscard]] static TranscriptionError fileNotFound();
    [[nodiscard]] static TranscriptionError fileTooSmall();
    [[nodiscard]] static TranscriptionError invalidResponse();
    [[nodiscard]] static TranscriptionError timeout();

    [[nodiscard]] Case which() const { return m_case; }

    /// The sentence for the person: "Server error 502: unknown", "Request timed out".
    [[nodiscard]] QString localizedDescription() const;

private:
    explicit TranscriptionError(Case which) : m_case(which) {}

    Case m_case;
    int m_status = 0;
    std::optional<QString> m_message;
};

} // namespace velmo
