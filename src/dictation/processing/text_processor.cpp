#include "dictation/processing/text_processor.h"

#include "base/characters.h"
#include "base/log.h"
#include "base/utf8.h"
#include "store/dictionary_words.h"
#include "text/local_pipeline.h"
#include "text/modes/modes.h"
#include "text/modes/system_prompt.h"
#include "text/passes/norwegian_words.h"
#include "text/tables/language_sets.h"

namespace velmo {

namespace {

QString whole(double milliseconds) {
    return fixed(milliseconds, 0);
}

void logNormalisation(const QString &text, const TextAnswer &answer) {
    const QString ms = whole(answer.milliseconds);
    if (answer.text) {
        log(LogTag::Normalize, QStringLiteral("Success in %1ms (%2 → %3 chars)")
                                   .arg(ms, QString::number(characterCount(text)),
                                        QString::number(characterCount(*answer.text))));
    } else if (answer.text.error().failure) {
        log(LogTag::Normalize, QStringLiteral("Failed after %1ms: %2").arg(ms, *answer.text.error().failure));
    } else {
        log(LogTag::Normalize, QStringLiteral("Invalid response after %1ms, falling back").arg(ms));
    }
}

void logModeProcessing(const TextAnswer &answer) {
    const QString ms = whole(answer.milliseconds);
    if (answer.text) {
        log(LogTag::Latency, QStringLiteral("/api/process responded in %1ms").arg(ms));
        log(LogTag::TextProcessor, QStringLiteral("Mode processing complete"));
    } else if (answer.text.error().failure) {
        log(LogTag::TextProcessor,
            QStringLiteral("Mode processing failed after %1ms: %2").arg(ms, *answer.text.error().failure));
    } else {
        log(LogTag::TextProcessor,
            QStringLiteral("Mode processing returned invalid response after %1ms").arg(ms));
    }
}

} // namespace

TextProcessor::TextProcessor(ServiceOrigin origin, HttpClient &http, TokenSource &tokens,
                             const Preferences &preferences)
    : m_preferences(preferences),
      m_personalWords(preferences),
      m_service(std::move(origin), http, tokens, preferences) {}

void TextProcessor::process(const QString &text, const std::optional<QString> &detectedLanguage,
                            Completion completion) {
    const CleanupContext context = cleanupContext(m_preferences, detectedLanguage);
    const QString cleaned = cleanup(preClean(text, context), context);
    const auto goOn = [this, detectedLanguage, primary = context.primaryLanguage,
                       completion = std::move(completion)](const QString &result) {
        finish(result, detectedLanguage, primary, completion);
    };
    if (context.detected(mayBeNorwegian) && looksNorwegian(cleaned))
        normalizeBokmal(cleaned, context.primaryLanguage, goOn);
    else
        goOn(cleaned);
}

void TextProcessor::normalizeBokmal(const QString &text, const QString &primaryLanguage,
                                    Completion continuation) {
    if (!isBokmal(primaryLanguage)) {
        continuation(text);
        return;
    }
    m_service.send(RequestKind::BokmalNormalisation, {{QStringLiteral("text"), wellFormed(text)}},
                   [text, continuation = std::move(continuation)](const TextAnswer &answer) {
                       logNormalisation(text, answer);
                       continuation(answer.text.value_or(text));
                   });
}

void TextProcessor::finish(const QString &text, const std::optional<QString> &detectedLanguage,
                           const QString &primaryLanguage, const Completion &completion) {
    const QString modePrompt = smartFormatting(m_preferences) ? selectedModePrompt(m_preferences) : QString();
    if (modePrompt.isEmpty()) {
        completion(withPersonalWords(text));
        return;
    }
    const QString systemPrompt = buildSystemPrompt(modePrompt, detectedLanguage.value_or(primaryLanguage),
                                                   vocabularyInstruction(dictionaryWords(m_preferences)));
    processWithMode(text, systemPrompt, completion);
}

void TextProcessor::processWithMode(const QString &text, const QString &systemPrompt, Completion completion) {
    const QJsonObject content = {{QStringLiteral("text"), wellFormed(text)},
                                 {QStringLiteral("systemPrompt"), wellFormed(systemPrompt)}};
    log(LogTag::Latency, QStringLiteral("/api/process request starting"));
    m_service.send(RequestKind::ModeProcessing, content,
                   [this, text, completion = std::move(completion)](const TextAnswer &answer) {
                       logModeProcessing(answer);
                       completion(answer.text ? *answer.text : withPersonalWords(text));
                   });
}

QString TextProcessor::withPersonalWords(const QString &text) const {
    return applyPersonalWords(text, m_personalWords.current());
}

} // namespace velmo
