#pragma once

#include "desks/desktop_fakes.h"
#include "desks/service_desk.h"
#include "dictation/session/dictation_stage.h"
#include "ui/models/onboarding_view.h"
#include "ui/models/settings_view.h"

namespace velmo::testing {

/// The settings page on a desktop that can change.
struct SettingsDesk {
    FakeDesktop desktop;
    SettingsView view{{desktop.preferences, desktop.watch, desktop.listener, desktop.triggerKey,
                       desktop.accessibility, desktop.microphone, desktop.microphone, desktop.systemSettings,
                       desktop.loginItem, QStringLiteral("1.0.0")}};
};

/// The same for onboarding.
struct OnboardingDesk {
    FakeDesktop desktop;
    ServiceDesk service{desktop.queue};
    DictationStage stage;
    SpeechTrial trial{stage.queue, stage.manager};
    OnboardingView view{{desktop.queue, desktop.listener, desktop.triggerKey, desktop.accessibility,
                         desktop.microphone, desktop.microphone, desktop.systemSettings, desktop.preferences,
                         desktop.watch, service.watch, trial}};
};

} // namespace velmo::testing
