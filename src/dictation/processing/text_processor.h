#pragma once

#include "dictation/processing/text_processing.h"
#include "dictation/processing/text_service.h"
#include "text/personal_words.h"

namespace velmo {

class HttpClient;

/// The whole way from a raw transcript to the text to type: the local path, Bokmål by the service where Norwegian was
/// spoken, and the selected mode, or else the person's own words and snippets. Whatever the service does, text comes
/// out, which says whether the mode is missing from it.
///
/// Without the service the completion comes before `process` returns, otherwise on a thread of the processor. A
/// processor that ends completes nothing any more.
class TextProcessor final : public TextProcessing {
public:
    /// The parts outlive the processor.
    TextProcessor(ServiceOrigin origin, HttpClient &http, TokenSource &tokens,
                  const Preferences &preferences);

    [[nodiscard]] const QString &baseURL() const { return m_service.baseURL(); }

    void process(const QString &text, const std::optional<QString> &detectedLanguage,
                 Completion completion) override;

private:
    void normalizeBokmal(const QString &text, const QString &primaryLanguage,
                         std::function<void(QString)> continuation);
    void finish(const QString &text, const std::optional<QString> &detectedLanguage,
                const QString &primaryLanguage, const Completion &completion);
    void processWithMode(const QString &text, const QString &systemPrompt, Completion completion);
    [[nodiscard]] QString withPersonalWords(const QString &text) const;

    const Preferences &m_preferences;
    const PersonalWords m_personalWords;
    TextService m_service; // last: its end waits for completions that use the rest
};

} // namespace velmo
