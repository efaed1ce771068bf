#pragma once

#include <QString>

namespace velmo::platform_texts {

/// The one table of what the interface must say otherwise on Linux. Everything else is the same on every desktop and
/// stands where it is shown.

/// The name of the trigger key where people read Fn elsewhere. Its blanks do not break, so a line never ends within it.
///
///   withTriggerKey(u"Hold Fn or double-tap Fn", u"Right Control")  "Hold Right Control or double-tap Right Control"
[[nodiscard]] QString withTriggerKey(QStringView text, QStringView keyLabel);

/// In the popover's set-up card.
[[nodiscard]] QString setupHint();

/// How to dictate where keys cannot be watched, with the command in bold (styled text).
[[nodiscard]] QString toggleCommandNote();

/// Where the trigger key is not watched although keys can be.
[[nodiscard]] QString missingTriggerKey(QStringView keyLabel);

// Onboarding: there is no permission to grant, so a step that is not done says what the person can do.

[[nodiscard]] QString openKeyboardSettings();
[[nodiscard]] QString chooseAnotherKey();
[[nodiscard]] QString openSoundSettings();
[[nodiscard]] QString microphoneHint();

// The account page while the service runs on this machine, where no identity provider is asked.

[[nodiscard]] QString localSignInInvitation();
[[nodiscard]] QString localSignIn();

} // namespace velmo::platform_texts
