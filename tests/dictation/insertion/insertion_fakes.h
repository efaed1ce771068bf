#pragma once

#include "base/main_queue.h"
#include "platform/clipboard.h"
#include "platform/focused_window.h"
#include "platform/key_injector.h"
#include "platform/session_lock.h"

#include <QStringList>
#include <vector>

// The desktop as text insertion sees it. Everything answers in a task of its own, as the real one does.
namespace velmo::testing {

inline ClipboardItem plain(const QString &text) {
    return {QStringLiteral("text/plain"), text.toUtf8()};
}

struct FakeClipboard final : Clipboard {
    explicit FakeClipboard(MainQueue &mainQueue) : queue(mainQueue) {}

    MainQueue &queue;
    std::vector<ClipboardItem> held;
    ChangeCount changes = 1;
    TextEvents events;                    ///< Of the text that stands there.
    std::optional<DisplayClient> watcher; ///< Reads every text of ours as soon as it stands there.
    std::function<void()> beforeNextChange;
    bool refusesChanges = false;
    int saves = 0;
    int handedOver = 0;

    [[nodiscard]] QString text() const { return held.empty() ? QString() : QString::fromUtf8(held[0].data); }

    void somebodyCopies(const QString &copied) {
        held = {plain(copied)};
        ++changes;
        if (const auto lost = std::exchange(events, {}).lost)
            queue.post(lost);
    }
    void readBy(DisplayClient client) const {
        queue.post([read = events.read, client] { read(client); });
    }

    void save(std::function<void(Saved)> done) override {
        ++saves;
        queue.post([done = std::move(done), saved = Saved{held, changes}] { done(saved); });
    }
    void setText(ChangeCount expected, const QString &text, TextEvents ofText, Changed done) override {
        change(expected, {plain(text)}, std::move(ofText), std::move(done));
    }
    void setItems(ChangeCount expected, std::vector<ClipboardItem> items, Changed done) override {
        change(expected, std::move(items), {}, std::move(done));
    }
    void handOver(std::function<void()> done) override {
        ++handedOver;
        queue.post(std::move(done));
    }

private:
    void change(ChangeCount expected, std::vector<ClipboardItem> items, TextEvents ofText, Changed done) {
        if (const auto first = std::exchange(beforeNextChange, {}))
            first();
        if (expected != changes || refusesChanges) {
            queue.post([done = std::move(done)] { done(std::nullopt); });
            return;
        }
        held = std::move(items);
        events = std::move(ofText);
        if (watcher && events.read)
            queue.post([read = events.read, client = *watcher] { read(client); });
        queue.post([done = std::move(done), count = ++changes] { done(count); });
    }
};

struct FakeKeyInjector final : KeyInjector {
    explicit FakeKeyInjector(MainQueue &mainQueue) : queue(mainQueue) {}

    MainQueue &queue;
    bool possible = true;
    bool works = true;
    std::vector<PasteShortcut> pressed;

    [[nodiscard]] bool canInject() const override { return possible; }
    void press(PasteShortcut shortcut, std::function<void(bool)> done) override {
        queue.post([this, shortcut, done = std::move(done)] {
            if (works)
                pressed.push_back(shortcut);
            done(works);
        });
    }
};

struct FakeFocus final : FocusedWindowFinder {
    explicit FakeFocus(MainQueue &mainQueue) : queue(mainQueue) {}

    MainQueue &queue;
    std::optional<FocusedWindow> window = FocusedWindow{DisplayClient{7}, QStringLiteral("Editor")};

    void find(std::function<void(std::optional<FocusedWindow>)> done) override {
        queue.post([done = std::move(done), found = window] { done(found); });
    }
};

struct FakeSessionLock final : SessionLock {
    bool locked = false;
    [[nodiscard]] bool isLocked() const override { return locked; }
};

} // namespace velmo::testing
