#include "app/command_line/sign_out.h"

#include "app/command_line/command_options.h"
#include "app/command_line/remote.h"
#include "app/command_line/session_outcomes.h"
#include "app/composition/composition.h"
#include "service/account/auth_manager.h"

#include <QEventLoop>

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;

namespace velmo {

namespace {

constexpr auto kPatience = 10s;

CommandOutcome signOutHere(Composition &composition) {
    AuthManager &auth = composition.authManager();
    QEventLoop untilSignedOut;
    QObject::connect(&auth, &AuthManager::signedOut, &untilSignedOut, &QEventLoop::quit);
    auth.signOut();
    untilSignedOut.exec();
    return signOutOutcome(auth);
}

int runSignOut(Composition &composition, const QStringList &arguments) {
    CommandOptions options(signOutCommand());
    if (const auto status = options.readOptionsAlone(arguments))
        return *status;
    if (const auto outcome = runInApplication(composition, {u"sign-out"_s}, kPatience))
        return tell(*outcome);
    return tell(signOutHere(composition));
}

} // namespace

Command signOutCommand() {
    return {"sign-out"_L1, QLatin1StringView(),
            "Forget your account on this machine; what you keep here stays."_L1, runSignOut};
}

} // namespace velmo
