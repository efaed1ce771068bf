#include "service/account/session_token.h"

#include "base/log.h"
#include "base/utf8.h"
#include "platform/keychain.h"

#include <QStringDecoder>
#include <QThreadPool>

using namespace Qt::StringLiterals;

namespace velmo {

namespace {

using namespace std::chrono_literals;

/// How long a read begun ahead serves. A dictation begins another with its recording and again while a long one goes
/// on; upload, processing and normalisation after it end within their limits of 35, 15 and 3 s.
constexpr auto kDictation = 60s;

std::optional<QString> textOf(const QByteArray &secret) {
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString text = decoder(secret);
    if (decoder.hasError() || text.isEmpty())
        return std::nullopt;
    return text;
}

} // namespace

SessionToken::SessionToken(Keychain &keychain, QString account, QThreadPool &worker, const MainQueue &clock,
                           std::function<void()> failureChanged)
    : m_keychain(keychain),
      m_account(std::move(account)),
      m_worker(worker),
      m_clock(clock),
      m_failureChanged(std::move(failureChanged)) {}

SessionToken::~SessionToken() {
    m_worker.waitForDone();
}

template <class Read>
std::optional<QString> SessionToken::ofThisSession(Read read) {
    for (;;) {
        const int session = this->session();
        Token token = read();
        const std::lock_guard lock(m_mutex);
        if (m_state == State::Forgotten)
            return std::nullopt;
        if (m_session == session)
            return token;
    }
}

std::optional<QString> SessionToken::read() {
    return ofThisSession([this] {
        const auto begun = prepared();
        return begun ? begun->get() : readKeychain();
    });
}

std::optional<QString> SessionToken::readOnWorker() {
    return ofThisSession([this] { return readKeychain(); });
}

void SessionToken::prepare() {
    auto task = std::make_shared<std::packaged_task<Token()>>([this] { return readKeychain(); });
    {
        const std::lock_guard lock(m_mutex);
        m_prepared = Prepared{task->get_future().share(), m_clock.uptime()};
    }
    m_worker.start([task] { (*task)(); });
}

int SessionToken::store(const QString &token) {
    auto outcome = m_keychain.remove(m_account);
    if (outcome)
        outcome = m_keychain.add(m_account, utf8(token));
    note(outcome ? QString() : outcome.error().reason);
    return beginSession(outcome ? State::Kept : State::Lost);
}

void SessionToken::forget(std::function<void()> done) {
    beginSession(State::Forgotten);
    m_worker.start([this, done = std::move(done)] {
        const auto outcome = m_keychain.remove(m_account);
        note(outcome ? QString() : outcome.error().reason);
        done();
    });
}

QString SessionToken::failure() const {
    const std::lock_guard lock(m_mutex);
    return m_failure;
}

int SessionToken::session() const {
    const std::lock_guard lock(m_mutex);
    return m_session;
}

std::optional<std::shared_future<std::optional<QString>>> SessionToken::prepared() const {
    const std::lock_guard lock(m_mutex);
    if (!m_prepared || m_clock.uptime() - m_prepared->begun >= kDictation)
        return std::nullopt;
    return m_prepared->token;
}

std::optional<QString> SessionToken::readKeychain() {
    const auto secret = m_keychain.read(m_account);
    if (!secret)
        note(secret.error().reason);
    else if (*secret || state() != State::Lost) // that a lost one is not there is no news
        note(QString());
    return secret && *secret ? textOf(**secret) : std::nullopt;
}

SessionToken::State SessionToken::state() const {
    const std::lock_guard lock(m_mutex);
    return m_state;
}

int SessionToken::beginSession(State state) {
    const std::lock_guard lock(m_mutex);
    ++m_session;
    m_state = state;
    m_prepared.reset();
    return m_session;
}

void SessionToken::note(const QString &failure) {
    {
        const std::lock_guard lock(m_mutex);
        if (m_failure == failure)
            return;
        m_failure = failure;
    }
    m_failureChanged();
    if (!failure.isEmpty())
        log(LogTag::Auth, u"The session token is out of reach: "_s + failure);
}

} // namespace velmo
