#include "text/passes/cleanup_context.h"

#include "base/case_mapping.h"
#include "store/languages.h"
#include "store/rule_scope.h"
#include "text/tables/language_sets.h"

#include <algorithm>

namespace velmo {

namespace {

template <class Predicate>
QStringList filtered(const QStringList &codes, Predicate keeps) {
    QStringList kept;
    std::copy_if(codes.begin(), codes.end(), std::back_inserter(kept), keeps);
    return kept;
}

/// The selected codes of the spoken language: itself, or for Norwegian whichever Norwegian ones there are.
QStringList spokenAmong(const QStringList &selected, const QString &spoken) {
    const QStringList same = filtered(selected, [&](const QString &code) { return code == spoken; });
    if (same.isEmpty() && isNorwegian(spoken))
        return filtered(selected, isNorwegian);
    return same;
}

/// The rules of every selected language apply, unless the person wants only those of the language spoken.
QStringList ruleLanguages(const Preferences &preferences, const std::optional<QString> &detected) {
    const QStringList selected = languageCodes(selectedLanguagesText(preferences));
    if (!detected || ruleScope(preferences) != RuleScope::Spoken)
        return selected;
    const QStringList spoken = spokenAmong(selected, *detected);
    return spoken.isEmpty() ? selected : spoken;
}

} // namespace

bool CleanupContext::detected(bool (*isInSet)(QStringView code)) const {
    return detectedLanguage && isInSet(*detectedLanguage);
}

CleanupContext cleanupContext(const Preferences &preferences,
                              const std::optional<QString> &detectedLanguage) {
    std::optional<QString> detected;
    if (detectedLanguage)
        detected = lowerCased(*detectedLanguage);
    QStringList languages = ruleLanguages(preferences, detected);
    return {std::move(languages), std::move(detected), primaryLanguage(preferences)};
}

} // namespace velmo
