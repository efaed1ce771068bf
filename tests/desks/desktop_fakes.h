#pragma once

#include "dictation/gestures/hotkey_listener.h"
#include "dictation/gestures/trigger_fakes.h"
#include "platform/login_item.h"
#include "platform/microphone_permission.h"
#include "platform/microphone_presence.h"
#include "platform/system_settings.h"
#include "store/memory_preferences.h"
#include "store/preference_keys.h"
#include "store/preference_watch.h"
#include "support/manual_main_queue.h"
#include "ui/models/trigger_key_capture.h"
#include "ui/models/trigger_key_name.h"

#include <set>

namespace velmo::testing {

struct FakeMicrophone final : MicrophonePermission, MicrophonePresence {
    Status permission = Status::Granted;
    bool isPresent = true;
    int requests = 0;
    [[nodiscard]] Status status() const override { return permission; }
    void request(MicrophonePermission::Answer answer) override {
        ++requests;
        answer(permission == Status::Granted);
    }
    void check(MicrophonePresence::Answer answer) override { answer(isPresent); }
};

struct FakeSystemSettings final : SystemSettings {
    std::set<Page> pages = {Page::Keyboard, Page::Sound};
    QStringList opened;
    [[nodiscard]] bool canOpen(Page page) const override { return pages.contains(page); }
    void open(Page page) override {
        opened.append(page == Page::Keyboard ? QStringLiteral("keyboard") : QStringLiteral("sound"));
    }
};

struct FakeLoginItem final : LoginItem {
    bool isOn = false;
    QString failure;
    [[nodiscard]] bool isEnabled() const override { return isOn; }
    [[nodiscard]] Result<void, QString> setEnabled(bool enabled) override {
        if (!failure.isNull())
            return failed(QString(failure));
        isOn = enabled;
        return {};
    }
};

/// The desktop around the pages that set Velmo up.
struct FakeDesktop {
    ManualMainQueue queue;
    MemoryPreferences preferences;
    PreferenceWatch watch{preferences, queue};
    FakeAccessibilityPermission accessibility;
    FakeEventTap tap;
    FakeGlobalHotkey hotkey;
    FakeKeyboardKeys keys;
    HotkeyListener listener{{queue, preferences, accessibility, tap, hotkey, keys}};
    FakeMicrophone microphone;
    FakeSystemSettings systemSettings;
    FakeLoginItem loginItem;
    TriggerKeyName triggerKeyName{preferences, watch, keys};
    TriggerKeyCapture triggerKey{{preferences, triggerKeyName, listener, keys}};
};

} // namespace velmo::testing
