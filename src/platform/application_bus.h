#pragma once

#include "base/interface.h"

#include <QString>
#include <QStringList>
#include <chrono>
#include <functional>
#include <optional>

namespace velmo {

/// What became of a command that another process gave: as if it had been a program.
struct CommandOutcome {
    int status = 0;
    QString output;  ///< For standard output.
    QString message; ///< For standard error; a sentence.

    bool operator==(const CommandOutcome &) const = default;
};

/// What other processes of the session may ask of the application. Main thread.
class ApplicationRequests : public Interface {
public:
    using Reply = std::function<void(const CommandOutcome &)>;

    /// Somebody started the application again: it shows itself.
    virtual void activate() = 0;

    /// Addresses of the application's own scheme. They come from outside and may be anything.
    virtual void open(const QStringList &addresses) = 0;

    /// Words of the command line. The reply comes once, perhaps much later.
    virtual void run(const QStringList &words, Reply reply) = 0;
};

/// Where the processes of a session find the one that goes by a name. Main thread.
class ApplicationBus : public Interface {
public:
    enum class Claim {
        Held,  ///< This process goes by the name now.
        Taken, ///< Another one does.
        NoBus, ///< The session has no bus; nobody can be found.
    };
    /// Nothing where nobody goes by the name.
    using Answer = std::function<void(const std::optional<CommandOutcome> &)>;

    /// Gives the name back.

    /// Takes the name and hands what others ask to `requests`, until it is given back.
    [[nodiscard]] virtual Claim claim(ApplicationRequests &requests) = 0;
    virtual void release() = 0;

    /// Asks whoever goes by the name; returns at once. The answers come on the main thread. One that does not come in
    /// time is an outcome with a message.
    virtual void activate(Answer answer) = 0;
    virtual void open(const QStringList &addresses, Answer answer) = 0;
    virtual void run(const QStringList &words, std::chrono::milliseconds patience, Answer answer) = 0;
};

} // namespace velmo
