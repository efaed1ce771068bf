#pragma once

#include "dictation/dictation_display.h"
#include "platform/microphone_permission.h"
#include "platform/sound_player.h"
#include "platform/workspace.h"

/// The parts of a dictation that a command line has no use for: nothing to see, nothing to hear, nobody to ask.
namespace velmo::headless {

/// What has been recorded needs no permission to be.
class NoPermissionNeeded final : public MicrophonePermission {
public:
    [[nodiscard]] Status status() const override { return Status::Granted; }
    void request(Answer answer) override { answer(true); }
};

class NoWorkspace final : public Workspace {
public:
    [[nodiscard]] std::optional<QString> frontmostApplicationName() const override { return std::nullopt; }
    void setActivationHandler(ActivationHandler) override {}
};

class Silence final : public SoundPlayer {
public:
    void play(SoundCue) override {}
};

class NoLevels final : public LevelMonitor {
public:
    void startMonitoring() override {}
    void stopMonitoring() override {}
};

class NoOverlay final : public OverlayDisplay {
public:
    void update(State) override {}
};

} // namespace velmo::headless
