#pragma once

#include <QString>

namespace velmo::platform_texts {

/// The one table of what the interface must say otherwise on Linux. Everything else is the same on every desktop and
/// stands where it is shown.

/// In the popover's set-up card.
[[nodiscard]] QString setupHint();

/// How to dictate where keys cannot be watched.
[[nodiscard]] QString toggleCommandNote();
/// The same as styled text, with the command in bold.
[[nodiscard]] QString styledToggleCommandNote();

/// Where the trigger key is not watched although keys can be.
[[nodiscard]] QString missingTriggerKey(const QString &keyName);

// Onboarding: there is no permission to grant, so a step that is not done says what the person can do.

[[nodiscard]] QString openKeyboardSettings();
[[nodiscard]] QString chooseAnotherKey();
[[nodiscard]] QString openSoundSettings();
[[nodiscard]] QString microphoneHint();

// The account page while the service runs on this machine, where no identity provider is asked.

[[nodiscard]] QString localSignInInvitation();
[[nodiscard]] QString localSignIn();

} // namespace velmo::platform_texts
