#include "ui/models/platform_texts.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

namespace velmo::platform_texts {

namespace {

QString translated(const char *text) {
    return QCoreApplication::translate("PlatformTexts", text);
}

} // namespace

QString withTriggerKey(QStringView text, QStringView keyLabel) {
    const QString label = keyLabel.toString().replace(u' ', QChar::Nbsp);
    return text.toString().replace(u"Fn"_s, label);
}

QString setupHint() {
    return translated("Log in to an X11 session, or bind 'velmo toggle' to a key in your desktop's settings");
}

QString toggleCommandNote() {
    return translated(
        "Velmo cannot watch keys on this desktop. Bind the command <b>velmo toggle</b> to a key in your "
        "desktop’s keyboard settings to dictate all the same.");
}

QString missingTriggerKey(QStringView keyLabel) {
    return withTriggerKey(translated("This keyboard has no Fn key. Choose another."), keyLabel);
}

QString openKeyboardSettings() {
    return translated("Open Keyboard Settings");
}

QString chooseAnotherKey() {
    return translated("Choose Another Key…");
}

QString openSoundSettings() {
    return translated("Open Sound Settings");
}

QString microphoneHint() {
    return translated("Connect a microphone, or choose one in your sound settings.");
}

QString localSignInInvitation() {
    return translated(
        "Sign in to keep your dictionary, snippets and statistics with the Velmo service on this machine.");
}

QString localSignIn() {
    return translated("Sign In");
}

} // namespace velmo::platform_texts
