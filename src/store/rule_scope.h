#pragma once

namespace velmo {

class Preferences;

/// The rules of which languages clean a dictation.
enum class RuleScope {
    Selected, ///< Of every selected language; until somebody chooses, and for whatever else is stored.
    Spoken,   ///< Of the spoken language alone, where it is selected.
};

[[nodiscard]] RuleScope ruleScope(const Preferences &preferences);
void setRuleScope(Preferences &preferences, RuleScope scope);

} // namespace velmo
