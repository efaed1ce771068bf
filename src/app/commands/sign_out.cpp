#include "app/commands/sign_out.h"

#include "app/command_options.h"
#include "app/commands/remote.h"
#include "app/composition.h"
#include "service/auth_manager.h"

using namespace std::chrono_literals;

namespace velmo {

namespace {

constexpr auto kPatience = 10s;

int runSignOut(Composition &composition, const QStringList &arguments) {
    CommandOptions options(signOutCommand());
    if (const auto status = options.readOptionsAlone(arguments))
        return *status;
    if (const auto outcome = runInApplication(composition, {QStringLiteral("sign-out")}, kPatience))
        return tell(*outcome);
    composition.authManager().signOut(); // the end of the process waits for the keyring
    return exit_status::success;
}

} // namespace

Command signOutCommand() {
    return {QLatin1StringView("sign-out"), QLatin1StringView(),
            QLatin1StringView("Forget your account on this machine; what you keep here stays."), runSignOut};
}

} // namespace velmo
