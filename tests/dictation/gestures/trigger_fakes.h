#pragma once

#include "base/main_queue.h"
#include "platform/accessibility_permission.h"
#include "platform/event_tap.h"
#include "platform/global_hotkey.h"

// The keyboard of a trigger test.
namespace velmo::testing {

struct FakeEventTap final : EventTap {
    bool canStart = true;
    QString key; ///< Null while the tap does not run.
    Handler handler;
    int enabled = 0;

    bool start(const QString &triggerKey, Handler handle) override {
        if (!canStart)
            return false;
        key = triggerKey;
        handler = std::move(handle);
        return true;
    }
    void stop() override {
        key = QString();
        handler = nullptr;
    }
    void enable() override { ++enabled; }
};

struct FakeGlobalHotkey final : GlobalHotkey {
    struct Held final : Registration {
        explicit Held(std::function<void()> &pressed) : m_pressed(pressed) {}
        ~Held() override { m_pressed = nullptr; }
        std::function<void()> &m_pressed;
    };

    Status failure = 0;
    int registrations = 0;
    std::function<void()> pressed; ///< Empty while nothing is registered.

    Result<std::unique_ptr<Registration>, Status> registerHotkey(const Hotkey &,
                                                                 std::function<void()> callback) override {
        ++registrations;
        if (failure != 0)
            return failed(Status(failure));
        pressed = std::move(callback);
        return std::make_unique<Held>(pressed);
    }
};

struct FakeAccessibilityPermission final : AccessibilityPermission {
    bool trusted = true;
    [[nodiscard]] bool isTrusted() const override { return trusted; }
};

} // namespace velmo::testing
