#include "platform/linux/xkb/trigger_keys.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace velmo::xkb {

namespace {

struct Key {
    const char *name;
    const char *xkbName;
    xkb_keysym_t symbol;
    const char *refusal; ///< Null when the key can be chosen.

    friend void PrintTo(const Key &row, std::ostream *out) { *out << row.name; }
};

class Keys : public ::testing::TestWithParam<Key> {};

TEST_P(Keys, AreRefusedWithAReason) {
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
    Table, Keys,
    ::testing::Values(Key{"RightControl", "RCTL", XKB_KEY_Control_R, nullptr},
                      Key{"Menu", "COMP", XKB_KEY_Menu, nullptr},
                      Key{"F13", "FK13", XKB_KEY_XF86Tools, nullptr}, Key{"MediaKey", "I172", 0, nullptr},
                      Key{"PlainRightAlt", "RALT", XKB_KEY_Alt_R, nullptr},
                      Key{"AltGr", "RALT", XKB_KEY_ISO_Level3_Shift, kAltGr},
                      Key{"Letter", "AC01", XKB_KEY_a, kWriting}, Key{"Digit", "AE01", XKB_KEY_1, kWriting},
                      Key{"Space", "SPCE", XKB_KEY_space, kWriting}, Key{"KeypadDigit", "KP7", 0, kWriting},
                      Key{"KeypadEnter", "KPEN", 0, kWriting}, Key{"Return", "RTRN", 0, kEditing},
                      Key{"Arrow", "LEFT", 0, kEditing}, Key{"LeftControl", "LCTL", 0, kShortcuts},
                      Key{"Shift", "RTSH", 0, "Shift is held while capitals are written."},
                      Key{"CapsLock", "CAPS", 0, "Every press of this key switches a lock on or off."},
                      Key{"LeftSuper", "LWIN", 0, "The desktop opens its menu with this key."},
                      Key{"PrintScreen", "PRSC", 0, "The desktop takes screenshots with this key."},
                      Key{"NoName", "", 0, "This key has no name on this keyboard."}),
    [](const auto &info) { return info.param.name; });

/// Those of an X server or a Wayland compositor, without a keyboard.
struct KeysWithoutKeyboard final : TriggerKeys {
    [[nodiscard]] PhysicalKey keyAt(quint32) const override { return {}; }
};

TEST(TriggerKeysTest, AreCalledAsPeopleDo) {
    const KeysWithoutKeyboard keys;
    EXPECT_EQ(keys.labelOf(u"RCTL"), u"Right Control"_s);
    EXPECT_EQ(keys.labelOf(u"FK07"), u"F7"_s);
    EXPECT_EQ(keys.labelOf(u"I172"), u"I172"_s);
    EXPECT_TRUE(keys.refusalOf(keys.defaultTriggerKey()).isNull());
}

} // namespace

} // namespace velmo::xkb
