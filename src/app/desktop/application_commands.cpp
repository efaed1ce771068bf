#include "app/desktop/application_commands.h"

#include "app/process/exit_status.h"
#include "app/process/session_outcomes.h"
#include "dictation/session/dictation_controls.h"
#include "service/account/auth_manager.h"
#include "service/sync/sync_manager.h"

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

const CommandOutcome kDone;

CommandOutcome refusal(const QString &message) {
    return {exit_status::failure, QString(), message};
}

DictationControls::Answer answering(const ApplicationRequests::Reply &reply) {
    return [reply](const DictationControls::Outcome &outcome) {
        reply(outcome ? kDone : refusal(outcome.error()));
    };
}

} // namespace

ApplicationCommands::ApplicationCommands(const Collaborators &collaborators) : m_with(collaborators) {
    connect(&m_with.auth, &AuthManager::signInEnded, this, &ApplicationCommands::signInEnded);
    connect(&m_with.auth, &AuthManager::signedOut, this, &ApplicationCommands::signedOut);
}

void ApplicationCommands::activate() {
    if (onShow)
        onShow();
}

void ApplicationCommands::open(const QStringList &addresses) {
    for (const QString &address : addresses) {
        if (onAddress)
            onAddress(address);
    }
}

void ApplicationCommands::run(const QStringList &words, Reply reply) {
    struct Row {
        QStringList words;
        void (ApplicationCommands::*run)(const Reply &reply);
    };
    static const Row rows[] = {
        {{u"start"_s}, &ApplicationCommands::start},
        {{u"stop"_s}, &ApplicationCommands::stop},
        {{u"toggle"_s}, &ApplicationCommands::toggle},
        {{u"cancel"_s}, &ApplicationCommands::cancel},
        {{u"status"_s}, &ApplicationCommands::status},
        {{u"show"_s}, &ApplicationCommands::show},
        {{u"quit"_s}, &ApplicationCommands::quit},
        {{u"sync"_s}, &ApplicationCommands::sync},
        {{u"sign-in"_s}, &ApplicationCommands::signIn},
        {{u"sign-in"_s, u"--wait"_s}, &ApplicationCommands::waitForSignIn},
        {{u"sign-in"_s, u"--cancel"_s}, &ApplicationCommands::cancelSignIn},
        {{u"sign-out"_s}, &ApplicationCommands::signOut},
    };
    for (const Row &row : rows) {
        if (row.words == words) {
            (this->*row.run)(reply);
            return;
        }
    }
    reply({exit_status::usage, QString(), u"The running Velmo does not know this command."_s});
}

void ApplicationCommands::start(const Reply &reply) {
    m_with.controls.start(answering(reply));
}

void ApplicationCommands::stop(const Reply &reply) {
    answering(reply)(m_with.controls.stop());
}

void ApplicationCommands::toggle(const Reply &reply) {
    m_with.controls.toggle(answering(reply));
}

void ApplicationCommands::cancel(const Reply &reply) {
    answering(reply)(m_with.controls.cancel());
}

void ApplicationCommands::status(const Reply &reply) {
    reply({exit_status::success, nameOf(m_with.controls.state()) + u'\n', QString()});
}

void ApplicationCommands::show(const Reply &reply) {
    activate();
    reply(kDone);
}

void ApplicationCommands::quit(const Reply &reply) {
    reply(kDone);
    if (onQuit)
        onQuit();
}

void ApplicationCommands::sync(const Reply &reply) {
    m_with.auth.whenRestored(m_lifetime.guard([this, reply] { syncAccount(reply); }));
}

void ApplicationCommands::syncAccount(const Reply &reply) {
    if (!m_with.auth.isLoggedIn()) {
        reply(refusal(u"Not signed in"_s));
        return;
    }
    m_with.sync.syncAll([reply](bool succeeded) {
        reply(succeeded ? kDone : refusal(u"Not everything could be synchronised."_s));
    });
}

/// Replies with the address of the page at once; `--wait` tells how it ends.
void ApplicationCommands::signIn(const Reply &reply) {
    m_signInRuns = true;
    m_with.auth.signInWithApple();
    reply({exit_status::success, m_with.auth.authorizationAddress() + u'\n', QString()});
}

void ApplicationCommands::waitForSignIn(const Reply &reply) {
    if (m_signInRuns)
        m_waitingForSignIn.push_back(reply);
    else
        reply(m_lastSignIn);
}

void ApplicationCommands::cancelSignIn(const Reply &reply) {
    m_with.auth.cancelSignIn();
    reply(kDone);
}

void ApplicationCommands::signOut(const Reply &reply) {
    m_waitingForSignOut.push_back(reply);
    m_with.auth.signOut();
}

void ApplicationCommands::signInEnded(bool signedIn) {
    m_signInRuns = false;
    m_lastSignIn = signInOutcome(m_with.auth, signedIn);
    for (const Reply &reply : std::exchange(m_waitingForSignIn, {}))
        reply(m_lastSignIn);
}

void ApplicationCommands::signedOut() {
    for (const Reply &reply : std::exchange(m_waitingForSignOut, {}))
        reply(signOutOutcome(m_with.auth));
}

} // namespace velmo
