#pragma once

#include "base/interface.h"
#include "base/result.h"

#include <QString>
#include <functional>
#include <optional>

namespace velmo {

/// Why an authentication ended without an answer of its page.
struct WebAuthenticationFailure {
    enum class Kind {
        NotStarted, ///< No browser could be opened.
        Cancelled,  ///< By the person.
        Other,
    };
    Kind kind;
    QString description; ///< A sentence, for `Other`.
};

/// Shows a person a web page on which they say who they are. The page answers by leading to an address of a scheme of
/// the application's own. Main thread.
class WebAuthentication : public Interface {
public:
    /// The address the page led to; nothing where it led to none.
    using Outcome = Result<std::optional<QString>, WebAuthenticationFailure>;
    using Completion = std::function<void(Outcome)>;

    /// Opens the page and waits for the first address of that scheme. The completion comes at most once, after this
    /// returns. A session that still runs is replaced: its completion does not come any more.
    virtual void start(const QString &address, const QString &callbackScheme, Completion completion) = 0;

    /// The person gave up: ends the running session, if any, as cancelled.
    virtual void cancel() = 0;
};

} // namespace velmo
