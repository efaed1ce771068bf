#pragma once

#include "base/lifetime.h"
#include "platform/url_opener.h"
#include "platform/web_authentication.h"

namespace velmo {

/// An authentication in the person's own browser. The browser hands the page's answer to the desktop, the desktop to
/// whatever program is registered for the scheme, and that one, by `deliver`, to us.
class BrowserAuthentication final : public WebAuthentication {
public:
    /// Sees to it that the desktop hands addresses of our scheme to this program; the failure is a sentence.
    using Registration = std::function<Result<void, QString>()>;

    /// The opener outlives the authentication. `registration` is called as each session begins; one that fails is
    /// logged, as the desktop may know the program from before.
    BrowserAuthentication(UrlOpener &opener, Registration registration)
        : m_opener(opener), m_register(std::move(registration)) {}

    /// Sessions go on where no browser can be opened, and do not end as not started: the person is told the address and
    /// may open it elsewhere.
    void goOnWithoutBrowser() { m_goesOnWithoutBrowser = true; }

    void start(const QString &address, const QString &callbackScheme, Completion completion) override;
    void cancel() override;

    /// An address of a scheme of ours, from outside. One that no session waits for is ignored, with a log line.
    void deliver(const QString &address);

private:
    void browserAnswered(int session, bool opened);
    void end(const Outcome &outcome);

    UrlOpener &m_opener;
    Registration m_register;
    bool m_goesOnWithoutBrowser = false;
    int m_session = 0;
    QString m_callbackScheme;
    Completion m_completion; ///< While a session runs.
    Lifetime m_lifetime;
};

} // namespace velmo
