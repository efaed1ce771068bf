#include "dictation/gestures/trigger_key.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

struct Key {
    const char *name;
    const char *xkbName;
    quint32 symbol;
    const char *refusal; ///< Null when the key can be chosen.

    friend void PrintTo(const Key &row, std::ostream *out) { *out << row.name; }
};

class TriggerKeys : public ::testing::TestWithParam<Key> {};

TEST_P(TriggerKeys, AreRefusedWithAReason) {
    const QString refusal = refusalOfTriggerKey(QString::fromLatin1(GetParam().xkbName), GetParam().symbol);
    EXPECT_EQ(refusal, QString::fromLatin1(GetParam().refusal));
    EXPECT_EQ(refusal.isNull(), GetParam().refusal == nullptr);
}

constexpr const char *kWriting = "This key is needed for writing.";
constexpr const char *kEditing = "This key is needed for editing.";
constexpr const char *kAltGr = "AltGr is held while characters such as @ are written.";
constexpr const char *kShortcuts =
    "This key is held for shortcuts all the time. Choose the one on the right.";

INSTANTIATE_TEST_SUITE_P(
    Table, TriggerKeys,
    ::testing::Values(Key{"RightControl", "RCTL", 0xffe4, nullptr}, Key{"Menu", "COMP", 0xff67, nullptr},
                      Key{"F13", "FK13", 0x1008ff81, nullptr}, Key{"MediaKey", "I172", 0, nullptr},
                      Key{"PlainRightAlt", "RALT", 0xffea, nullptr}, Key{"AltGr", "RALT", 0xfe03, kAltGr},
                      Key{"Letter", "AC01", 'a', kWriting}, Key{"Digit", "AE01", '1', kWriting},
                      Key{"Space", "SPCE", ' ', kWriting}, Key{"KeypadDigit", "KP7", 0, kWriting},
                      Key{"KeypadEnter", "KPEN", 0, kWriting}, Key{"Return", "RTRN", 0, kEditing},
                      Key{"Arrow", "LEFT", 0, kEditing}, Key{"LeftControl", "LCTL", 0, kShortcuts},
                      Key{"Shift", "RTSH", 0, "Shift is held while capitals are written."},
                      Key{"CapsLock", "CAPS", 0, "Every press of this key switches a lock on or off."},
                      Key{"LeftSuper", "LWIN", 0, "The desktop opens its menu with this key."},
                      Key{"PrintScreen", "PRSC", 0, "The desktop takes screenshots with this key."},
                      Key{"NoName", "", 0, "This key has no name on this keyboard."}),
    [](const auto &info) { return info.param.name; });

TEST(TriggerKeyLabel, IsWhatPeopleCallTheKey) {
    EXPECT_EQ(triggerKeyLabel(u"RCTL"), u"Right Control"_s);
    EXPECT_EQ(triggerKeyLabel(u"FK07"), u"F7"_s);
    EXPECT_EQ(triggerKeyLabel(u"I172"), u"I172"_s);
}

} // namespace

} // namespace velmo
