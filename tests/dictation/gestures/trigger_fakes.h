#pragma once

#include "base/main_queue.h"
#include "platform/accessibility_permission.h"
#include "platform/event_tap.h"
#include "platform/global_hotkey.h"
#include "platform/keyboard_keys.h"

#include <map>

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
        explicit Held(std::function<void()> &pressed) : heard(pressed) {}
        ~Held() override { heard = nullptr; }
        std::function<void()> &heard;
    };

    Status failure = 0;
    int registrations = 0;
    std::function<void()> pressed; ///< Empty while nothing is registered.

    Result<std::unique_ptr<Registration>, Status> registerHotkey(const Hotkey &,
                                                                 std::function<void()> callback) override {
        ++registrations;
        if (failure != 0)
            return failed(failure);
        pressed = std::move(callback);
        return std::make_unique<Held>(pressed);
    }
};

/// Scan codes as an X server gives them: 38 is "a", 105 Right Control, 108 AltGr, 127 Pause.
struct FakeKeyboardKeys final : KeyboardKeys {
    [[nodiscard]] PhysicalKey keyAt(quint32 scanCode) const override {
        static const std::map<quint32, PhysicalKey> keys = {
            {38, {QStringLiteral("AC01"), kWriting}},
            {105, {QStringLiteral("RCTL"), {}}},
            {108,
             {QStringLiteral("RALT"),
              QStringLiteral("AltGr is held while characters such as @ are written.")}},
            {127, {QStringLiteral("PAUS"), {}}}};
        const auto key = keys.find(scanCode);
        return key == keys.end() ? PhysicalKey{{}, QStringLiteral("This key has no name on this keyboard.")}
                                 : key->second;
    }
    [[nodiscard]] QString defaultTriggerKey() const override { return QStringLiteral("RCTL"); }
    [[nodiscard]] QString refusalOf(QStringView name) const override {
        return name.isEmpty() || name.startsWith(u"AC") ? QString(kWriting) : QString();
    }
    [[nodiscard]] QString labelOf(QStringView name) const override {
        static const std::map<QString, QString> labels = {
            {QStringLiteral("RCTL"), QStringLiteral("Right Control")},
            {QStringLiteral("MENU"), QStringLiteral("Menu")},
            {QStringLiteral("PAUS"), QStringLiteral("Pause")}};
        const auto label = labels.find(name.toString());
        return label == labels.end() ? name.toString() : label->second;
    }

    static constexpr QLatin1StringView kWriting{"This key is needed for writing."};
};

struct FakeAccessibilityPermission final : AccessibilityPermission {
    bool trusted = true;
    [[nodiscard]] bool isTrusted() const override { return trusted; }
};

} // namespace velmo::testing
