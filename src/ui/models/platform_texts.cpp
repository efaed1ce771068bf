#include "ui/models/platform_texts.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

namespace velmo::platform_texts {

namespace {

struct Texts {
    Q_DECLARE_TR_FUNCTIONS(PlatformTexts)
};

QString toggleNoteFor(const QString &command) {
    return Texts::tr("Velmo cannot watch keys on this desktop. Bind the command %1 to a key in your "
                     "desktop’s keyboard settings to dictate all the same.")
        .arg(command);
}

} // namespace

QString setupHint() {
    return Texts::tr("Log in to an X11 session, or bind 'velmo toggle' to a key in your desktop's settings");
}

QString toggleCommandNote() {
    return toggleNoteFor(u"velmo toggle"_s);
}

QString styledToggleCommandNote() {
    return toggleNoteFor(u"<b>velmo toggle</b>"_s);
}

QString missingTriggerKey(const QString &keyName) {
    return Texts::tr("This keyboard has no %1 key. Choose another.").arg(keyName);
}

QString openKeyboardSettings() {
    return Texts::tr("Open Keyboard Settings");
}

QString chooseAnotherKey() {
    return Texts::tr("Choose Another Key…");
}

QString openSoundSettings() {
    return Texts::tr("Open Sound Settings");
}

QString microphoneHint() {
    return Texts::tr("Connect a microphone, or choose one in your sound settings.");
}

QString localSignInInvitation() {
    return Texts::tr(
        "Sign in to keep your dictionary, snippets and statistics with the Velmo service on this machine.");
}

QString localSignIn() {
    return Texts::tr("Sign In");
}

} // namespace velmo::platform_texts
