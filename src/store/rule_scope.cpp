#include "store/rule_scope.h"

#include "store/preference_keys.h"
#include "store/preferences.h"

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

const QString kSelected = u"selected"_s;
const QString kSpoken = u"spoken"_s;

} // namespace

RuleScope ruleScope(const Preferences &preferences) {
    return preferences.string(keys::ruleScope) == kSpoken ? RuleScope::Spoken : RuleScope::Selected;
}

void setRuleScope(Preferences &preferences, RuleScope scope) {
    preferences.set(keys::ruleScope, scope == RuleScope::Spoken ? kSpoken : kSelected);
}

} // namespace velmo
