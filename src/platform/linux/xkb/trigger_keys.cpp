#include "platform/linux/xkb/trigger_keys.h"

#include <QCoreApplication>
#include <QRegularExpression>
#include <array>

using namespace Qt::StringLiterals;

namespace velmo::xkb {

namespace {

/// Why groups of keys are needed elsewhere. The pattern matches whole XKB names.
struct Refusal {
    const char *names;
    const char *sentence;
};

constexpr std::array kRefusals = {
    Refusal{"A[A-E][0-9]{2}|TLDE|BKSL|LSGT|SPCE|KP.{1,2}",
            QT_TRANSLATE_NOOP("TriggerKey", "This key is needed for writing.")},
    Refusal{"RTRN|TAB|BKSP|ESC|INS|DELE|HOME|END|PGUP|PGDN|UP|DOWN|LEFT|RGHT",
            QT_TRANSLATE_NOOP("TriggerKey", "This key is needed for editing.")},
    Refusal{"LFSH|RTSH", QT_TRANSLATE_NOOP("TriggerKey", "Shift is held while capitals are written.")},
    Refusal{"CAPS|NMLK",
            QT_TRANSLATE_NOOP("TriggerKey", "Every press of this key switches a lock on or off.")},
    Refusal{"LCTL|LALT",
            QT_TRANSLATE_NOOP("TriggerKey",
                              "This key is held for shortcuts all the time. Choose the one on the right.")},
    Refusal{"LWIN|LMTA", QT_TRANSLATE_NOOP("TriggerKey", "The desktop opens its menu with this key.")},
    Refusal{"PRSC|SYRQ", QT_TRANSLATE_NOOP("TriggerKey", "The desktop takes screenshots with this key.")},
};

struct Label {
    QStringView name;
    const char *label;
};

constexpr std::array kLabels = {
    Label{u"RCTL", QT_TRANSLATE_NOOP("TriggerKey", "Right Control")},
    Label{u"RALT", QT_TRANSLATE_NOOP("TriggerKey", "Right Alt")},
    Label{u"RWIN", QT_TRANSLATE_NOOP("TriggerKey", "Right Super")},
    Label{u"COMP", QT_TRANSLATE_NOOP("TriggerKey", "Menu")},
    Label{u"MENU", QT_TRANSLATE_NOOP("TriggerKey", "Menu")},
    Label{u"PAUS", QT_TRANSLATE_NOOP("TriggerKey", "Pause")},
    Label{u"SCLK", QT_TRANSLATE_NOOP("TriggerKey", "Scroll Lock")},
};

QString translated(const char *text) {
    return QCoreApplication::translate("TriggerKey", text);
}

} // namespace

QString refusalOfTriggerKey(QStringView name, xkb_keysym_t symbol) {
    if (name.isEmpty())
        return translated(QT_TRANSLATE_NOOP("TriggerKey", "This key has no name on this keyboard."));
    for (const Refusal &row : kRefusals) {
        const QRegularExpression pattern(QRegularExpression::anchoredPattern(QLatin1StringView(row.names)));
        if (pattern.match(name).hasMatch())
            return translated(row.sentence);
    }
    // AltGr, in layouts that write characters with it.
    if (symbol == XKB_KEY_ISO_Level3_Shift || symbol == XKB_KEY_Mode_switch)
        return translated(
            QT_TRANSLATE_NOOP("TriggerKey", "AltGr is held while characters such as @ are written."));
    return {};
}

QString TriggerKeys::defaultTriggerKey() const {
    return u"RCTL"_s;
}

QString TriggerKeys::refusalOf(QStringView name) const {
    return refusalOfTriggerKey(name, XKB_KEY_NoSymbol);
}

QString TriggerKeys::labelOf(QStringView name) const {
    for (const Label &row : kLabels) {
        if (row.name == name)
            return translated(row.label);
    }
    bool isNumbered = false;
    const int number = name.mid(2).toInt(&isNumbered);
    if (name.startsWith(u"FK") && isNumbered)
        return u'F' + QString::number(number);
    return name.toString();
}

} // namespace velmo::xkb
