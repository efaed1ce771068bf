#pragma once

#include "base/result.h"

#include <QString>
#include <functional>
#include <optional>

namespace velmo {

/// What a recording is transcribed with.
struct TranscriptionSettings {
    QString language;              ///< The primary language code.
    QString languages;             ///< The selected codes as stored, separated by commas.
    std::optional<QString> prompt; ///< Hint words joined with ", ".

    bool operator==(const TranscriptionSettings &) const = default;
};

struct Transcript {
    QString text;                            ///< As received, untrimmed.
    std::optional<QString> detectedLanguage; ///< A code as the service reports it.
};

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

using TranscriptionResult = Result<Transcript, TranscriptionError>;

/// Turns recordings into text.
class Transcriber {
public:
    using Completion = std::function<void(TranscriptionResult)>;

    Transcriber() = default;
    Transcriber(const Transcriber &) = delete;
    Transcriber &operator=(const Transcriber &) = delete;
    virtual ~Transcriber() = default;

    /// A recording has begun (or goes on): whatever an upload will need can be got ready. Returns at once.
    virtual void prepare() = 0;

    /// Any thread; the completion comes exactly once: for a file that is missing, too small, too large or
    /// cannot be opened before this returns, on the caller's thread; for everything else on another thread. The file is read,
    /// never removed; once this has returned it may be.
    virtual void transcribe(const QString &path, const TranscriptionSettings &settings,
                            Completion completion) = 0;
};

} // namespace velmo
