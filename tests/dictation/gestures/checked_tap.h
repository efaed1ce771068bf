#pragma once

#include "platform/event_tap.h"

#include <atomic>
#include <gtest/gtest.h>

namespace velmo::testing {

/// Stands between a tap, a fake or a real one, and whom it tells, and fails the test where the tap breaks its word
/// (platform/event_tap.h).
class CheckedTap final : public EventTap {
public:
    explicit CheckedTap(EventTap &tap) : m_tap(tap) {}

    bool start(const QString &triggerKey, Handler handler) override {
        m_runs = true; // it may tell something before it returns
        m_runs = m_tap.start(triggerKey, [this, handler = std::move(handler)](const TapEvent &event) {
            check(event);
            return handler(event);
        });
        return m_runs;
    }
    void stop() override {
        m_tap.stop();
        m_runs = false;
        m_isHeld = false;
    }
    void enable() override { m_tap.enable(); }

private:
    void check(const TapEvent &event) {
        EXPECT_TRUE(m_runs) << "nothing is told after the end";
        switch (event.type) {
        case TapEventType::FlagsChanged: {
            const bool isPress = event.flags.testFlag(KeyFlag::SecondaryFunction);
            EXPECT_NE(isPress, m_isHeld) << "presses and releases alternate";
            EXPECT_TRUE(isPress || event.flags == KeyFlags()) << "a release bears no flag";
            m_isHeld = isPress;
            break;
        }
        case TapEventType::OtherPressed:
            EXPECT_TRUE(m_isHeld) << "others matter while the key is held";
            break;
        case TapEventType::DisabledByTimeout:
        case TapEventType::DisabledByUserInput:
            EXPECT_FALSE(m_isHeld) << "the release comes first";
            break;
        }
    }

    EventTap &m_tap;
    std::atomic<bool> m_runs = false;
    bool m_isHeld = false;
};

} // namespace velmo::testing
