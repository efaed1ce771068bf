#include "text/local_pipeline.h"

#include "base/characters.h"
#include "text/passes/capitals.h"
#include "text/passes/fillers.h"
#include "text/passes/line_breaks.h"
#include "text/passes/norwegian_words.h"
#include "text/passes/repeated_words.h"
#include "text/passes/spacing.h"
#include "text/passes/spoken_emoji.h"
#include "text/passes/spoken_punctuation.h"
#include "text/passes/transcript.h"
#include "text/vocabulary/apply_dictionary.h"

namespace velmo {

namespace {

using Pass = TextPass<CleanupContext>;

// The order is the behaviour: each pass relies on what those before it left.
constexpr Pass kPreClean[] = {
    {QLatin1StringView("line breaks of the transcript"), foldTranscriptBreaks},
    {QLatin1StringView("wishes"), mendWishes},
    {QLatin1StringView("repeated short words"), collapseRepeatedShortWords},
    {QLatin1StringView("stock phrases"), dropStockPhrase},
    {QLatin1StringView("first capital"), capitaliseStart},
};

constexpr Pass kCleanup[] = {
    {QLatin1StringView("spoken punctuation"), writeSpokenPunctuation},
    {QLatin1StringView("fillers"), removeFillers},
    {QLatin1StringView("repeated short words"), collapseRepeatedShortWords}, // those a filler stood between
    {QLatin1StringView("spoken emoji"), writeSpokenEmoji},
    {QLatin1StringView("Norwegian words"), fixNorwegian}, // a "no" counts only right behind a mark or break
    {QLatin1StringView("white space"), squeezeWhiteSpace},
    {QLatin1StringView("space before marks"), pullMarksToWords},
    {QLatin1StringView("space behind marks"), spaceOutMarks},
    {QLatin1StringView("sentence capitals"), capitaliseSentences},
    {QLatin1StringView("English I"), capitaliseEnglishI},
    {QLatin1StringView("first capital"), capitaliseStart},
    {QLatin1StringView("white space"), squeezeWhiteSpace},
    {QLatin1StringView("leading mark"), dropLeadingMark}, // behind the capitals: ", hei" becomes "hei"
    {QLatin1StringView("spoken line breaks"), writeSpokenBreaks},
};

constexpr TextPass<PersonalContext> kPersonalWords[] = {
    {QLatin1StringView("vocabulary"),
     [](const QString &text, const PersonalContext &own) { return applyDictionary(text, *own.vocabulary); }},
    {QLatin1StringView("snippets"),
     [](const QString &text, const PersonalContext &own) { return expandSnippets(text, *own.snippets); }},
};

} // namespace

QString preClean(const QString &transcript, const CleanupContext &context, const TextTrace &trace) {
    return runPasses<CleanupContext>(kPreClean, transcript, context, trace);
}

QString cleanup(const QString &text, const CleanupContext &context, const TextTrace &trace) {
    if (trimmed(text).isEmpty())
        return text;
    return runPasses<CleanupContext>(kCleanup, text, context, trace);
}

QString applyPersonalWords(const QString &text, const PersonalContext &context, const TextTrace &trace) {
    return runPasses<PersonalContext>(kPersonalWords, text, context, trace);
}

QString LocalTextPath::process(const QString &transcript, const std::optional<QString> &detectedLanguage,
                               const TextTrace &trace) const {
    const CleanupContext context = cleanupContext(m_preferences, detectedLanguage);
    const QString text = preClean(trimmed(transcript).toString(), context, trace);
    return applyPersonalWords(cleanup(text, context, trace), m_personalWords.current(), trace);
}

} // namespace velmo
