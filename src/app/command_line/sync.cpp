#include "app/command_line/sync.h"

#include "app/command_line/command_options.h"
#include "app/command_line/remote.h"
#include "app/composition/composition.h"
#include "service/sync/sync_manager.h"

#include <QEventLoop>

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;

namespace velmo {

namespace {

/// Each part takes two exchanges of a minute at most, after one that may be under way already.
constexpr auto kPatience = 5min;

CommandOutcome syncHere(Composition &composition) {
    composition.waitForSession();
    if (!composition.account().isLoggedIn())
        return {exit_status::failure, QString(), u"Not signed in"_s};
    QEventLoop untilSynchronised;
    composition.syncManager().syncAll([&](bool succeeded) {
        untilSynchronised.exit(succeeded ? exit_status::success : exit_status::failure);
    });
    const int status = untilSynchronised.exec();
    composition.waitForRequests();
    return {status, QString(),
            status == exit_status::success ? QString() : u"Not everything could be synchronised."_s};
}

int runSync(Composition &composition, const QStringList &arguments) {
    CommandOptions options(syncCommand());
    if (const auto status = options.readOptionsAlone(arguments))
        return *status;
    const auto outcome = runInApplication(composition, {u"sync"_s}, kPatience);
    return tell(outcome ? *outcome : syncHere(composition));
}

} // namespace

Command syncCommand() {
    return {"sync"_L1, QLatin1StringView(),
            "Bring dictionary, snippets and statistics in step with your account."_L1, runSync};
}

} // namespace velmo
