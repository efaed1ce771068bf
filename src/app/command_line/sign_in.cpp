#include "app/command_line/command_options.h"
#include "app/command_line/commands.h"
#include "app/process/event_loop.h"
#include "app/process/exit_status.h"
#include "app/process/output.h"
#include "app/process/running_application.h"
#include "app/process/session_outcomes.h"
#include "app/process/termination_signals.h"
#include "base/main_queue.h"
#include "service/account/auth_manager.h"

using namespace Qt::StringLiterals;

using namespace std::chrono_literals;

namespace velmo {

namespace {

constexpr CommandWords kWords = {"sign-in"_L1, {}, "Sign in to your account in the browser."_L1};

/// Long enough to look up a password; a product decision.
constexpr auto kPatience = 10min;

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
std::optional<CommandOutcome> signInThere(ApplicationBus &application, GivingUp &givingUp) {
    const QString signIn(kWords.name);
    const auto begun = runInApplication(application, {signIn}, 10s);
    if (!begun || begun->status != exit_status::success)
        return begun;
    printAddress(begun->output);
    givingUp.onGiveUp = [&application, signIn] {
        application.run({signIn, u"--cancel"_s}, 10s, [](const auto &) {});
    };
    const auto ended = runInApplication(application, {signIn, u"--wait"_s}, kPatience + 1min);
    return ended.value_or(
        CommandOutcome{exit_status::failure, QString(), u"Velmo ended before the sign-in did."_s});
}

/// Takes the browser's answer while no application runs.
class CallbackReceiver final : public ApplicationRequests {
public:
    explicit CallbackReceiver(const std::function<void(const QString &)> &deliver) : m_deliver(deliver) {}

    void activate() override {}
    void open(const QStringList &addresses) override {
        for (const QString &address : addresses)
            m_deliver(address);
    }
    void run(const QStringList &, Reply reply) override {
        reply({exit_status::usage, QString(), u"A sign-in is under way."_s});
    }

private:
    const std::function<void(const QString &)> &m_deliver;
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

CommandOutcome signInHere(const SignInCollaborators &with, GivingUp &givingUp) {
    CallbackReceiver receiver(with.deliverCallback);
    if (const auto complaint = complaintAbout(with.signIn.claim(receiver)))
        return {exit_status::failure, QString(), *complaint};
    const CommandAccount account = with.account();
    account.waitForSession();
    AuthManager &auth = account.auth;
    givingUp.onGiveUp = [&auth] { auth.cancelSignIn(); };
    const auto outcome = awaitAnswer<CommandOutcome>([&auth](const auto &answer) {
        const auto ended = [&auth, answer](bool signedIn) { answer(signInOutcome(auth, signedIn)); };
        QObject::connect(&auth, &AuthManager::signInEnded, &auth, ended, Qt::SingleShotConnection);
        auth.signInWithApple();
        printAddress(auth.authorizationAddress() + u'\n');
    });
    account.waitForRequests(); // signing in begins a synchronisation
    return outcome;
}

int runSignIn(const Lazy<SignInCollaborators> &collaborators, const QStringList &arguments) {
    CommandOptions options(kWords);
    if (const auto status = options.readOptionsAlone(arguments))
        return *status;
    const SignInCollaborators with = collaborators();
    GivingUp givingUp(with.queue);
    const auto outcome = signInThere(with.application, givingUp);
    return printOutcome(outcome ? *outcome : signInHere(with, givingUp));
}

} // namespace

Command signInCommand(Lazy<SignInCollaborators> collaborators) {
    return {kWords, std::bind_front(runSignIn, std::move(collaborators))};
}

} // namespace velmo
