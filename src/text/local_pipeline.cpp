#include "text/local_pipeline.h"

#include "base/characters.h"
#include "text/passes/passes.h"
#include "text/vocabulary/apply_dictionary.h"

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

using Pass = TextPass<CleanupContext>;

// The order is the behaviour: each pass relies on what those before it left.
constexpr Pass kPreClean[] = {
    {"line breaks of the transcript"_L1, foldTranscriptBreaks},
    {"wishes"_L1, mendWishes},
    {"repeated short words"_L1, collapseRepeatedShortWords},
    {"stock phrases"_L1, dropStockPhrase},
    {"first capital"_L1, capitaliseStart},
};

constexpr Pass kCleanup[] = {
    {"spoken punctuation"_L1, writeSpokenPunctuation},
    {"fillers"_L1, removeFillers},
    {"repeated short words"_L1, collapseRepeatedShortWords}, // those a filler stood between
    {"spoken emoji"_L1, writeSpokenEmoji},
    {"Norwegian words"_L1, fixNorwegian}, // a "no" counts only right behind a mark or break
    {"white space"_L1, squeezeWhiteSpace},
    {"space before marks"_L1, pullMarksToWords},
    {"space behind marks"_L1, spaceOutMarks},
    {"sentence capitals"_L1, capitaliseSentences},
    {"English I"_L1, capitaliseEnglishI},
    {"first capital"_L1, capitaliseStart},
    {"white space"_L1, squeezeWhiteSpace},
    {"leading mark"_L1, dropLeadingMark}, // behind the capitals: ", hei" becomes "hei"
    {"spoken line breaks"_L1, writeSpokenBreaks},
};

constexpr TextPass<PersonalContext> kPersonalWords[] = {
    {"vocabulary"_L1,
     [](const QString &text, const PersonalContext &own) { return applyDictionary(text, *own.vocabulary); }},
    {"snippets"_L1,
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
