#pragma once

#include "dictation/gestures/hotkey_listener.h"
#include "dictation/gestures/trigger_fakes.h"
#include "platform/keyboard_keys.h"
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

#include <map>
#include <set>

namespace velmo::testing {

/// Scan codes as an X server gives them: 38 is "a", 105 Right Control, 108 AltGr, 127 Pause.
struct FakeKeyboardKeys final : KeyboardKeys {
    std::map<quint32, PhysicalKey> keys = {{38, {QStringLiteral("AC01"), 'a'}},
                                           {105, {QStringLiteral("RCTL"), 0xffe4}},
                                           {108, {QStringLiteral("RALT"), 0xfe03}},
                                           {127, {QStringLiteral("PAUS"), 0xff13}}};
    [[nodiscard]] std::optional<PhysicalKey> keyAt(quint32 scanCode) const override {
        const auto key = keys.find(scanCode);
        return key == keys.end() ? std::nullopt : std::optional(key->second);
    }
};

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
    HotkeyListener listener{{queue, preferences, accessibility, tap, hotkey}};
    FakeKeyboardKeys keys;
    FakeMicrophone microphone;
    FakeSystemSettings systemSettings;
    FakeLoginItem loginItem;
    TriggerKeyName triggerKeyName{preferences, watch};
    TriggerKeyCapture triggerKey{{preferences, triggerKeyName, listener, keys}};
};

} // namespace velmo::testing
