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

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

QString whole(double milliseconds) {
    return fixed(milliseconds, 0);
}

void logNormalisation(const QString &text, const TextAnswer &answer) {
    const QString ms = whole(answer.milliseconds);
    if (answer.text) {
        log(LogTag::Normalize,
            u"Success in %1ms (%2 → %3 chars)"_s.arg(ms, QString::number(characterCount(text)),
                                                     QString::number(characterCount(*answer.text))));
    } else if (answer.text.error().failure) {
        log(LogTag::Normalize, u"Failed after %1ms: %2"_s.arg(ms, *answer.text.error().failure));
    } else {
        log(LogTag::Normalize, u"Invalid response after %1ms, falling back"_s.arg(ms));
    }
}

void logModeProcessing(const TextAnswer &answer) {
    const QString ms = whole(answer.milliseconds);
    if (answer.text) {
        log(LogTag::Latency, u"/api/process responded in %1ms"_s.arg(ms));
        log(LogTag::TextProcessor, u"Mode processing complete"_s);
    } else if (answer.text.error().failure) {
        log(LogTag::TextProcessor,
            u"Mode processing failed after %1ms: %2"_s.arg(ms, *answer.text.error().failure));
    } else {
        log(LogTag::TextProcessor, u"Mode processing returned invalid response after %1ms"_s.arg(ms));
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
                                    std::function<void(QString)> continuation) {
    if (!isBokmal(primaryLanguage)) {
        continuation(text);
        return;
    }
    m_service.send(RequestKind::BokmalNormalisation, {{u"text"_s, wellFormed(text)}},
                   [text, continuation = std::move(continuation)](const TextAnswer &answer) {
                       logNormalisation(text, answer);
                       continuation(answer.text.value_or(text));
                   });
}

void TextProcessor::finish(const QString &text, const std::optional<QString> &detectedLanguage,
                           const QString &primaryLanguage, const Completion &completion) {
    const QString modePrompt = smartFormatting(m_preferences) ? selectedModePrompt(m_preferences) : QString();
    if (modePrompt.isEmpty()) {
        completion({withPersonalWords(text)});
        return;
    }
    const QString systemPrompt = buildSystemPrompt(modePrompt, detectedLanguage.value_or(primaryLanguage),
                                                   vocabularyInstruction(dictionaryWords(m_preferences)));
    processWithMode(text, systemPrompt, completion);
}

void TextProcessor::processWithMode(const QString &text, const QString &systemPrompt, Completion completion) {
    const QJsonObject content = {{u"text"_s, wellFormed(text)},
                                 {u"systemPrompt"_s, wellFormed(systemPrompt)}};
    log(LogTag::Latency, u"/api/process request starting"_s);
    m_service.send(RequestKind::ModeProcessing, content,
                   [this, text, completion = std::move(completion)](const TextAnswer &answer) {
                       logModeProcessing(answer);
                       completion(answer.text ? ProcessedText{*answer.text}
                                              : ProcessedText{withPersonalWords(text), true});
                   });
}

QString TextProcessor::withPersonalWords(const QString &text) const {
    return applyPersonalWords(text, m_personalWords.current());
}

} // namespace velmo
