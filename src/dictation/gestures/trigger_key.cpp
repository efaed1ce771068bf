#include "dictation/gestures/trigger_key.h"

#include "store/preference_keys.h"
#include "store/preferences.h"

#include <QCoreApplication>
#include <QRegularExpression>
#include <array>

namespace velmo {

namespace {

/// Symbols of AltGr in layouts that write characters with it (X.Org's keysymdef.h).
constexpr quint32 kLevel3Shift = 0xfe03;
constexpr quint32 kModeSwitch = 0xff7e;

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

QString refusalOfTriggerKey(QStringView name, quint32 symbol) {
    if (name.isEmpty())
        return translated(QT_TRANSLATE_NOOP("TriggerKey", "This key has no name on this keyboard."));
    for (const Refusal &row : kRefusals) {
        const QRegularExpression pattern(QRegularExpression::anchoredPattern(QLatin1StringView(row.names)));
        if (pattern.match(name).hasMatch())
            return translated(row.sentence);
    }
    if (symbol == kLevel3Shift || symbol == kModeSwitch)
        return translated(
            QT_TRANSLATE_NOOP("TriggerKey", "AltGr is held while characters such as @ are written."));
    return {};
}

QString triggerKeyLabel(QStringView name) {
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

QString triggerKey(const Preferences &preferences) {
    const QString stored = preferences.string(keys::triggerKey).value_or(QString());
    return refusalOfTriggerKey(stored).isEmpty() ? stored : kDefaultTriggerKey.toString();
}

} // namespace velmo
