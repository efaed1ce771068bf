#pragma once

#include <QLatin1StringView>

/// Every key of the preference domain. The kind and the default when absent stand beside each.
namespace velmo::keys {

inline constexpr QLatin1StringView primaryLanguage{"velmoPrimaryLanguage"};     // String, "no"
inline constexpr QLatin1StringView selectedLanguages{"velmoSelectedLanguages"}; // String, "no,sv,da,fi,en"
inline constexpr QLatin1StringView ruleScope{"velmoRuleScope"};                 // String, "selected"
inline constexpr QLatin1StringView selectedMode{"velmoSelectedMode"};           // String, "accurate"
inline constexpr QLatin1StringView smartFormatting{"velmoSmartFormatting"};     // Bool, true
inline constexpr QLatin1StringView liveWords{"velmoLiveWords"};                 // Bool, true
inline constexpr QLatin1StringView customModes{"velmoCustomModes"};             // String (JSON), none
inline constexpr QLatin1StringView dictionary{"velmoDictionary"};               // String (JSON), empty
inline constexpr QLatin1StringView learnedWords{"velmoLearnedWords"};           // String (JSON), none
inline constexpr QLatin1StringView snippets{"velmoSnippets"};                   // String (JSON), empty
inline constexpr QLatin1StringView transcriptionHistory{"velmoTranscriptionHistory"}; // Data (JSON), empty
inline constexpr QLatin1StringView firstUseDate{"velmoFirstUseDate"};                 // Date, none
inline constexpr QLatin1StringView heroCardDismissed{"velmoHeroCardDismissed"};       // Bool, false
inline constexpr QLatin1StringView onboardingComplete{"velmoOnboardingComplete"};     // Bool, false
inline constexpr QLatin1StringView keylessSetupComplete{"velmoKeylessSetupComplete"}; // Bool, false
inline constexpr QLatin1StringView previousFnUsage{"velmo_previous_fn_usage"}; // Integer, nothing to restore
inline constexpr QLatin1StringView user{"velmoUser"};                          // Data (JSON), not signed in
inline constexpr QLatin1StringView deviceId{"velmoDeviceId"};                  // String, no identifier yet
inline constexpr QLatin1StringView triggerKey{"velmoTriggerKey"};              // String, "RCTL"

} // namespace velmo::keys
