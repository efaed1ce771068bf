#include "app/command_line/command_options.h"
#include "app/command_line/commands.h"
#include "app/process/event_loop.h"
#include "app/process/exit_status.h"
#include "app/process/output.h"
#include "app/process/running_application.h"
#include "service/account/auth_manager.h"
#include "service/sync/sync_manager.h"

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;

namespace velmo {

namespace {

constexpr CommandWords kWords = {
    "sync"_L1, {}, "Bring dictionary, snippets and statistics in step with your account."_L1};

/// Each part takes two exchanges of a minute at most, after one that may be under way already.
constexpr auto kPatience = 5min;

CommandOutcome syncHere(const CommandAccount &account) {
    account.waitForSession();
    if (!account.auth.isLoggedIn())
        return {exit_status::failure, QString(), u"Not signed in"_s};
    const bool succeeded = awaitAnswer<bool>([&](const auto &answer) { account.sync.syncAll(answer); });
    account.waitForRequests();
    if (succeeded)
        return {};
    return {exit_status::failure, QString(), u"Not everything could be synchronised."_s};
}

int runSync(const Lazy<ApplicationBus &> &application, const Lazy<CommandAccount> &account,
            const QStringList &arguments) {
    CommandOptions options(kWords);
    if (const auto status = options.readOptionsAlone(arguments))
        return *status;
    const auto outcome = runInApplication(application(), {QString(kWords.name)}, kPatience);
    return printOutcome(outcome ? *outcome : syncHere(account()));
}

} // namespace

Command syncCommand(Lazy<ApplicationBus &> application, Lazy<CommandAccount> account) {
    return {kWords, std::bind_front(runSync, std::move(application), std::move(account))};
}

} // namespace velmo
