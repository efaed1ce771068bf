#include "app/command_line/sign_in.h"

#include "app/command_line/command_options.h"
#include "app/command_line/output.h"
#include "app/command_line/remote.h"
#include "app/command_line/session_outcomes.h"
#include "app/composition/composition.h"
#include "app/desktop/termination_signals.h"
#include "base/main_queue.h"
#include "service/account/auth_manager.h"

#include <QEventLoop>

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;

namespace velmo {

namespace {

/// Long enough to look up a password; a product decision.
constexpr auto kPatience = 10min;

const QString kSignIn = u"sign-in"_s;

void printAddress(const QString &address) {
    printError(u"Your browser opens this page; if it does not, open it yourself. Ctrl-C gives up."_s);
    print(address);
}

/// Notices that the person gives up: by Ctrl-C, or by letting the time pass. Made before any thread, so that Ctrl-C is
/// for no thread.
class GivingUp {
public:
    explicit GivingUp(MainQueue &queue) : m_timer(queue.after(kPatience, [this] { giveUp(); })) {
        m_signals.onTerminate = [this] { giveUp(); };
    }

    std::function<void()> onGiveUp;

private:
    void giveUp() const {
        if (onGiveUp)
            onGiveUp();
    }

    TerminationSignals m_signals;
    MainQueue::Timer m_timer;
};

/// The sign-in of the running application; nothing where none runs.
std::optional<CommandOutcome> signInThere(Composition &composition, GivingUp &givingUp) {
    const auto begun = runInApplication(composition, {kSignIn}, 10s);
    if (!begun || begun->status != exit_status::success)
        return begun;
    printAddress(begun->output);
    givingUp.onGiveUp = [&] {
        composition.applicationBus().run({kSignIn, u"--cancel"_s}, 10s, [](const auto &) {});
    };
    const auto ended = runInApplication(composition, {kSignIn, u"--wait"_s}, kPatience + 1min);
    return ended.value_or(
        CommandOutcome{exit_status::failure, QString(), u"Velmo ended before the sign-in did."_s});
}

/// Takes the browser's answer while no application runs.
class CallbackReceiver final : public ApplicationRequests {
public:
    explicit CallbackReceiver(Composition &composition) : m_composition(composition) {}

    void activate() override {}
    void open(const QStringList &addresses) override {
        for (const QString &address : addresses)
            m_composition.deliverCallback(address);
    }
    void run(const QStringList &, Reply reply) override {
        reply({exit_status::usage, QString(), u"A sign-in is under way."_s});
    }

private:
    Composition &m_composition;
};

std::optional<QString> complaintAbout(ApplicationBus::Claim claim) {
    switch (claim) {
    case ApplicationBus::Claim::Held:
        return std::nullopt;
    case ApplicationBus::Claim::Taken:
        return u"Another 'velmo sign-in' is under way."_s;
    case ApplicationBus::Claim::NoBus:
        break;
    }
    return u"This session has no message bus, over which the browser could hand its answer to Velmo."_s;
}

CommandOutcome signInHere(Composition &composition, GivingUp &givingUp) {
    CallbackReceiver receiver(composition);
    if (const auto complaint = complaintAbout(composition.signInBus().claim(receiver)))
        return {exit_status::failure, QString(), *complaint};
    composition.signInWithoutBrowser();
    AuthManager &auth = composition.authManager();
    composition.waitForSession();

    QEventLoop untilEnded;
    CommandOutcome outcome;
    QObject::connect(&auth, &AuthManager::signInEnded, &untilEnded, [&](bool signedIn) {
        outcome = signInOutcome(auth, signedIn);
        untilEnded.quit();
    });
    givingUp.onGiveUp = [&] { auth.cancelSignIn(); };
    auth.signInWithApple();
    printAddress(auth.authorizationAddress() + u'\n');
    untilEnded.exec();
    composition.waitForRequests(); // signing in begins a synchronisation
    return outcome;
}

int runSignIn(Composition &composition, const QStringList &arguments) {
    CommandOptions options(signInCommand());
    if (const auto status = options.readOptionsAlone(arguments))
        return *status;
    GivingUp givingUp(composition.mainQueue());
    const auto outcome = signInThere(composition, givingUp);
    return tell(outcome ? *outcome : signInHere(composition, givingUp));
}

} // namespace

Command signInCommand() {
    return {"sign-in"_L1, QLatin1StringView(), "Sign in to your account in the browser."_L1, runSignIn};
}

} // namespace velmo
