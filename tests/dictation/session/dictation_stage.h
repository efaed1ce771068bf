#pragma once

#include "dictation/capture/audio_level_provider.h"
#include "dictation/gestures/hotkey_listener.h"
#include "dictation/gestures/trigger_fakes.h"
#include "dictation/insertion/insertion_fakes.h"
#include "dictation/insertion/text_inserter.h"
#include "dictation/session/dictation_controls.h"
#include "dictation/session/dictation_fakes.h"
#include "dictation/session/recording_manager.h"
#include "store/history_store.h"
#include "store/memory_preferences.h"
#include "store/preference_watch.h"
#include "support/manual_main_queue.h"

namespace velmo::testing {

struct FakeAudioLevelSource final : AudioLevelSource {};

/// A dictation with real controllers and stores, which stands still until a test moves it on. Nobody listens to the keys
/// yet.
struct DictationStage {
    explicit DictationStage(OverlayDisplay *display = nullptr)
        : manager{{queue, preferences, microphone, workspace, sounds, recorder, transcriber, processor,
                   inserter, levelMeter, display ? *display : noOverlay, history, account, account}},
          controls{{listener, manager, recorder, recorder, lock, watch}} {}

    void dictate(const QString &text) {
        manager.startRecording();
        queue.advance(std::chrono::seconds(2));
        manager.stopRecording();
        queue.runPosted();
        transcriber.complete(Transcript{text, std::nullopt});
        queue.runPosted();
        processor.complete({text});
        queue.runPosted();
    }

    ManualMainQueue queue;
    MemoryPreferences preferences;
    PreferenceWatch watch{preferences, queue};
    FakeMicrophonePermission microphone;
    FakeWorkspace workspace;
    FakeSounds sounds;
    FakeRecorder recorder;
    FakeTranscriber transcriber;
    FakeTextProcessing processor;
    FakeClipboard clipboard{queue};
    FakeClipboard primarySelection{queue};
    FakeKeyInjector keys{queue};
    FakeFocus focus{queue};
    FakeSessionLock lock;
    TextInserter inserter{{queue, clipboard, primarySelection, keys, focus, lock}};
    FakeAudioLevelSource levels;
    AudioLevelProvider levelMeter{queue, levels};
    FakeOverlay noOverlay;
    HistoryStore history{preferences, queue};
    FakeAccount account;
    FakeAccessibilityPermission permission;
    FakeEventTap tap;
    FakeGlobalHotkey hotkey;
    FakeKeyboardKeys keyboardKeys;
    HotkeyListener listener{{queue, preferences, permission, tap, hotkey, keyboardKeys}};
    RecordingManager manager;
    DictationControls controls;
};

} // namespace velmo::testing
