#include "ui/models/platform_texts.h"

#include <QCoreApplication>

namespace velmo::platform_texts {

namespace {

QString translated(const char *text) {
    return QCoreApplication::translate("PlatformTexts", text);
}

} // namespace

QString withTriggerKey(QStringView text, QStringView keyLabel) {
    const QString label = keyLabel.toString().replace(u' ', QChar::Nbsp);
    return text.toString().replace(QStringLiteral("Fn"), label);
}

QString setupHint() {
    return translated("Log in to an X11 session, or bind 'velmo toggle' to a key in your desktop's settings");
}

} // namespace velmo::platform_texts
