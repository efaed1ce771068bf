#include "app/command_line/command_options.h"
#include "app/command_line/commands.h"
#include "app/process/event_loop.h"
#include "app/process/output.h"
#include "app/process/running_application.h"
#include "app/process/session_outcomes.h"
#include "service/account/auth_manager.h"

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;

namespace velmo {

namespace {

constexpr CommandWords kWords = {
    "sign-out"_L1, {}, "Forget your account on this machine; what you keep here stays."_L1};

constexpr auto kPatience = 10s;

CommandOutcome signOutHere(AuthManager &auth) {
    awaitDone([&auth](const Done &done) {
        QObject::connect(&auth, &AuthManager::signedOut, &auth, done, Qt::SingleShotConnection);
        auth.signOut();
    });
    return signOutOutcome(auth);
}

int runSignOut(const Lazy<ApplicationBus &> &application, const Lazy<AuthManager &> &auth,
               const QStringList &arguments) {
    CommandOptions options(kWords);
    if (const auto status = options.readOptionsAlone(arguments))
        return *status;
    const auto outcome = runInApplication(application(), {QString(kWords.name)}, kPatience);
    return printOutcome(outcome ? *outcome : signOutHere(auth()));
}

} // namespace

Command signOutCommand(Lazy<ApplicationBus &> application, Lazy<AuthManager &> auth) {
    return {kWords, std::bind_front(runSignOut, std::move(application), std::move(auth))};
}

} // namespace velmo
