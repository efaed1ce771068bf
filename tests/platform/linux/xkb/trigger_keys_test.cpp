#include "platform/linux/xkb/trigger_keys.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace velmo::xkb {

namespace {

constexpr const char *kWriting = "This key is needed for writing.";
constexpr const char *kEditing = "This key is needed for editing.";
constexpr const char *kAltGr = "AltGr is held while characters such as @ are written.";
constexpr const char *kShortcuts =
    "This key is held for shortcuts all the time. Choose the one on the right.";

TEST(TriggerKeysTest, AreRefusedWithAReason) {
    const struct {
        const char *name;
        const char *xkbName;
        xkb_keysym_t symbol;
        const char *refusal; ///< Null when the key can be chosen.
    } rows[] = {{"RightControl", "RCTL", XKB_KEY_Control_R, nullptr},
                {"Menu", "COMP", XKB_KEY_Menu, nullptr},
                {"F13", "FK13", XKB_KEY_XF86Tools, nullptr},
                {"MediaKey", "I172", 0, nullptr},
                {"PlainRightAlt", "RALT", XKB_KEY_Alt_R, nullptr},
                {"AltGr", "RALT", XKB_KEY_ISO_Level3_Shift, kAltGr},
                {"Letter", "AC01", XKB_KEY_a, kWriting},
                {"Digit", "AE01", XKB_KEY_1, kWriting},
                {"Space", "SPCE", XKB_KEY_space, kWriting},
                {"KeypadDigit", "KP7", 0, kWriting},
                {"KeypadEnter", "KPEN", 0, kWriting},
                {"Return", "RTRN", 0, kEditing},
                {"Arrow", "LEFT", 0, kEditing},
                {"LeftControl", "LCTL", 0, kShortcuts},
                {"Shift", "RTSH", 0, "Shift is held while capitals are written."},
                {"CapsLock", "CAPS", 0, "Every press of this key switches a lock on or off."},
                {"LeftSuper", "LWIN", 0, "The desktop opens its menu with this key."},
                {"PrintScreen", "PRSC", 0, "The desktop takes screenshots with this key."},
                {"NoName", "", 0, "This key has no name on this keyboard."}};
    for (const auto &row : rows) {
        const QString refusal = refusalOfTriggerKey(QString::fromLatin1(row.xkbName), row.symbol);
        EXPECT_EQ(refusal, QString::fromLatin1(row.refusal)) << row.name;
        EXPECT_EQ(refusal.isNull(), row.refusal == nullptr) << row.name;
    }
}

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
