#pragma once

#include "app/command_line/command.h"
#include "app/command_line/command_account.h"

#include <vector>

// The subcommands of `velmo`, each with what it uses; all of that outlives the command.
namespace velmo {

class ApplicationBus;
class AudioLength;
class AuthManager;
class DictationHistory;
class HistoryStore;
class MainQueue;
class Preferences;
class TextProcessing;
class Transcriber;

/// What dictates recordings from files.
struct FileDictationCollaborators {
    MainQueue &queue;
    Preferences &preferences;
    const AudioLength &audioLength;
    Transcriber &transcriptionClient;
    TextProcessing &textProcessor;
    DictationHistory &history;
    CommandAccount account;
};

/// `velmo dictate FILE...`: each recording goes through the dictation as if it had just been spoken.
[[nodiscard]] Command dictateCommand(Lazy<FileDictationCollaborators> collaborators);

/// `velmo clean`: the local text path alone, from standard input to standard output. No network: modes and the
/// Bokmål service are never asked.
[[nodiscard]] Command cleanCommand(Lazy<const Preferences &> preferences);

/// `velmo history`: the texts that were dictated, for people or as JSON.
[[nodiscard]] Command historyCommand(Lazy<const HistoryStore &> history);

/// What signs in from the command line.
struct SignInCollaborators {
    MainQueue &queue;
    ApplicationBus &application; ///< Which signs in itself where it runs.
    ApplicationBus
        &signIn; ///< Where the browser's answer finds this process, and a second attempt the first.
    std::function<void(const QString &address)> deliverCallback; ///< To the authentication that waits for it.
    Lazy<CommandAccount> account;
};

/// `velmo sign-in`: opens the browser, prints the address too, and waits until the person has answered or gives up.
[[nodiscard]] Command signInCommand(Lazy<SignInCollaborators> collaborators);

/// `velmo sign-out`: forgets the session, here and in the running application.
[[nodiscard]] Command signOutCommand(Lazy<ApplicationBus &> application, Lazy<AuthManager &> auth);

/// `velmo sync`: synchronises everything and waits for it. The running application does it where there is one.
[[nodiscard]] Command syncCommand(Lazy<ApplicationBus &> application, Lazy<CommandAccount> account);

/// `velmo defaults list | read KEY | write KEY KIND VALUE | delete KEY`: the preference domain.
[[nodiscard]] Command defaultsCommand(Lazy<Preferences &> preferences);

/// `velmo start`, `stop`, `toggle`, `cancel`, `status`, `show` and `quit`, which are for the running application alone.
[[nodiscard]] std::vector<Command> remoteCommands(const Lazy<ApplicationBus &> &application);

} // namespace velmo
