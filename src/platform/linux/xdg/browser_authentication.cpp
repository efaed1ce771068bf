#include "platform/linux/xdg/browser_authentication.h"

#include "base/log.h"

using namespace Qt::StringLiterals;

namespace velmo {

using Kind = WebAuthenticationFailure::Kind;

void BrowserAuthentication::start(const QString &address, const QString &callbackScheme,
                                  Completion completion) {
    ++m_session;
    m_callbackScheme = callbackScheme;
    m_completion = std::move(completion);
    if (const auto outcome = m_register(); !outcome)
        log(LogTag::Auth, outcome.error());
    m_opener.open(address, m_lifetime.guard([this, session = m_session](bool opened) {
        browserAnswered(session, opened);
    }));
}

void BrowserAuthentication::cancel() {
    end(failed(WebAuthenticationFailure{Kind::Cancelled, QString()}));
}

void BrowserAuthentication::deliver(const QString &address) {
    const bool isAwaited = m_completion && address.startsWith(m_callbackScheme + u':', Qt::CaseInsensitive);
    if (isAwaited)
        end(address);
    else
        log(LogTag::Auth, u"Ignored a callback that nobody waits for"_s);
}

void BrowserAuthentication::browserAnswered(int session, bool opened) {
    if (opened || session != m_session || !m_completion)
        return;
    if (m_goesOnWithoutBrowser)
        log(LogTag::Auth, u"No browser could be opened"_s);
    else
        end(failed(WebAuthenticationFailure{Kind::NotStarted, QString()}));
}

void BrowserAuthentication::end(const Outcome &outcome) {
    if (const auto completion = std::exchange(m_completion, {}))
        completion(outcome);
}

} // namespace velmo
