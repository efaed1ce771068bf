#pragma once

#include "platform/floating_windows.h"
#include "platform/global_mouse_monitor.h"

namespace velmo::testing {

/// A desktop that remembers what it was asked to do for floating windows.
struct FakeFloatingWindows final : FloatingWindows {
    struct Loan final : KeyboardLoan {
        explicit Loan(bool &isActive) : lent(isActive) { lent = true; }
        ~Loan() override { lent = false; }
        [[nodiscard]] bool isActive() const override { return lent; }
        bool &lent;
    };

    bool composited = true;
    bool keyboardIsOut = false;
    QList<QRect> inputRegion; ///< Set last.
    Events events;            ///< Of who watches last.

    [[nodiscard]] bool isComposited() const override { return composited; }
    [[nodiscard]] std::unique_ptr<Handle> watch(Events toCall) override {
        events = std::move(toCall);
        return std::make_unique<Handle>();
    }
    [[nodiscard]] QRect freeOf(QRect screen) const override { return screen; }
    void setInputRegion(quint64, const QList<QRect> &region) override { inputRegion = region; }
    [[nodiscard]] std::unique_ptr<KeyboardLoan> borrowKeyboard(quint64) override {
        return std::make_unique<Loan>(keyboardIsOut);
    }
};

struct FakeMouseMonitor final : GlobalMouseMonitor {
    Clicked click; ///< Of who watches last.

    [[nodiscard]] std::unique_ptr<Watch> watch(Clicked clicked) override {
        click = std::move(clicked);
        return std::make_unique<Watch>();
    }
};

} // namespace velmo::testing
