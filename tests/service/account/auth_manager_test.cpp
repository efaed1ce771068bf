#include "service/account/auth_manager.h"

#include "service/account/account_fixture.h"
#include "service/account/token_exchange.h"
#include "store/preference_keys.h"

#include <QUrl>
#include <QUrlQuery>
#include <future>
#include <thread>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using ::testing::IsEmpty;

namespace velmo {

namespace {

using Kind = WebAuthenticationFailure::Kind;
using testing::reply;

const QByteArray kExchange = "/api/auth/apple";
const QByteArray kRefresh = "/api/auth/me";
const QByteArray kSession =
    R"({"token":"t-1","user":{"id":"u1","email":"kari@example.no","name":"Kari","x":1}})";

QString authLine(const QString &line) {
    return u"🔑 [Auth] "_s + line;
}

} // namespace

class AuthManagerTest : public testing::AccountTest {
protected:
    void storeSession(const QByteArray &token, const QByteArray &user = R"({"id":"u1"})") {
        keychain.items[AuthManager::keychainKey] = token;
        preferences.set(keys::user, user);
    }

    [[nodiscard]] QByteArray storedToken() const {
        const auto found = keychain.items.find(AuthManager::keychainKey);
        return found == keychain.items.end() ? QByteArray() : found->second;
    }

    /// The token as a request would get it: on another thread.
    [[nodiscard]] std::optional<QString> token() {
        std::optional<QString> token;
        std::thread([&] { token = auth->authToken(); }).join();
        return token;
    }

    void startAttempt() {
        if (!auth)
            createAuth();
        settle();
        auth->signInWithApple();
        settle();
    }

    /// Has the page of the running attempt lead to the address.
    void callback(const QString &address) {
        std::exchange(web.complete, {})(address);
        settle();
    }

    void signIn() {
        server.answer(kExchange, 200, kSession);
        startAttempt();
        callback(u"velmo://auth?id_token=id"_s);
    }
};

TEST_F(AuthManagerTest, OpensThePageOfTheIdentityProvider) {
    startAttempt();
    EXPECT_TRUE(auth->isLoading());
    const QUrl url(web.address, QUrl::StrictMode);
    EXPECT_EQ(url.adjusted(QUrl::RemoveQuery).toString(), u"https://id.example/auth/authorize"_s);
    EXPECT_EQ(web.scheme, u"velmo"_s);
    EXPECT_EQ(auth->authorizationAddress(), web.address);
    const auto items = QUrlQuery(url).queryItems(QUrl::FullyDecoded);
    const QString state = items.last().second;
    const QList<std::pair<QString, QString>> expected = {
        {u"client_id"_s, u"com.tarnwell.velmo.web"_s},
        {u"redirect_uri"_s, server.origin() + u"/api/auth/apple/callback"_s},
        {u"response_type"_s, u"code id_token"_s},
        {u"scope"_s, u"name email"_s},
        {u"response_mode"_s, u"form_post"_s},
        {u"state"_s, state},
    };
    EXPECT_EQ(items, expected);
    EXPECT_EQ(state.size(), 36);
    auth->signInWithApple();
    EXPECT_NE(QUrlQuery(QUrl(web.address)).queryItemValue(u"state"_s), state);
}

TEST_F(AuthManagerTest, SignsInAndRemembersIt) {
    signIn();
    EXPECT_EQ(requests(), QStringList{uR"(POST /api/auth/apple {"identityToken":"id"})"_s});
    EXPECT_FALSE(server.requests()[0].header("Authorization"));
    EXPECT_EQ(storedToken(), "t-1");
    EXPECT_EQ(preferences.data(keys::user), R"({"email":"kari@example.no","id":"u1","name":"Kari"})");
    EXPECT_EQ(log.lines(), QStringList({authLine(u"Got Apple id_token, exchanging via /api/auth/apple..."_s),
                                        authLine(u"Signed in as kari@example.no"_s)}));
    EXPECT_TRUE(auth->isLoggedIn());
    EXPECT_FALSE(auth->isLoading());
    EXPECT_EQ(auth->userName(), u"Kari"_s);
    EXPECT_EQ(signedIn, 1);
    EXPECT_EQ(token(), u"t-1"_s);

    // The next start, at first offline.
    server.react(kRefresh, {{"", testing::Reaction::Then::Close}});
    createAuth();
    EXPECT_FALSE(auth->isLoggedIn());
    settle();
    EXPECT_TRUE(auth->isLoggedIn());
    EXPECT_EQ(auth->userEmail(), u"kari@example.no"_s);
    EXPECT_EQ(signedIn, 1);
}

TEST_F(AuthManagerTest, SendsWhatIsToldOfTheName) {
    struct Row {
        const char *name;
        const char *user; // as the item's JSON text
        const char *expected;
    };
    const Row rows[] = {{"both parts", R"({"name":{"firstName":"Kari","lastName":"Ås & co","x":1}})",
                         R"({"fullName":{"familyName":"Ås & co","givenName":"Kari"},"identityToken":"i=d"})"},
                        {"one part", R"({"name":{"lastName":"Nordmann"}})",
                         R"({"fullName":{"familyName":"Nordmann"},"identityToken":"i=d"})"},
                        {"parts of another kind", R"({"name":{"firstName":1,"lastName":null}})",
                         R"({"identityToken":"i=d"})"},
                        {"a name of another kind", R"({"name":"Kari"})", R"({"identityToken":"i=d"})"},
                        {"no JSON", "Kari", R"({"identityToken":"i=d"})"},
                        {"no value", "", R"({"identityToken":"i=d"})"}};
    server.answer(kExchange, 500, "");
    for (const Row &row : rows) {
        startAttempt();
        callback(u"velmo://auth?id_token=i%3Dd&id_token=other&user="_s +
                 QString::fromLatin1(QUrl::toPercentEncoding(QString::fromUtf8(row.user))));
        EXPECT_EQ(server.requests().back().body.toStdString(), row.expected) << row.name;
    }
}

TEST_F(AuthManagerTest, TellsThatASignInFailedUntilTheNextOne) {
    server.answer(kExchange, 500, "");
    startAttempt();
    callback(u"velmo://auth?id_token=id"_s);
    EXPECT_EQ(auth->authError(), u"Sign-in failed (server error 500). Please try again."_s);
    EXPECT_TRUE(log.contains(authLine(u"Token exchange failed: HTTP 500"_s)));
    EXPECT_FALSE(auth->isLoading());
    EXPECT_FALSE(auth->isLoggedIn());
    EXPECT_THAT(keychain.items, IsEmpty());
    startAttempt();
    EXPECT_TRUE(auth->authError().isNull());
}

TEST(TokenExchange, SaysWhyThereIsNoSession) {
    using Failure = TransportFailure::Kind;
    const auto failure = [](Failure kind) { return failed(TransportFailure{kind, u"It rains."_s}); };
    const auto answer = [](const QByteArray &body) { return HttpReply{200, body}; };
    const QString rains = u"Token exchange failed: It rains."_s;
    const QString none = u"Token exchange failed: no response"_s;
    const QString noResponse = u"Sign-in failed — no response from server."_s;
    const QString unparsed = u"Failed to parse auth response: "_s;
    const QString unreadable = u"Sign-in failed — couldn't read server response."_s;
    const QString odd = u"Unexpected response format"_s;
    const QString unexpected = u"Sign-in failed — unexpected server response."_s;
    const std::tuple<const char *, HttpOutcome, QString, QString> rows[] = {
        {"not reached", failure(Failure::Network), rains, u"Sign-in failed: It rains."_s},
        {"late", failure(Failure::TimedOut), rains, u"Server took too long to respond. Please try again."_s},
        {"no HTTP", failure(Failure::InvalidReply), none, noResponse},
        {"another success", HttpReply{201, kSession}, u"Token exchange failed: HTTP 201"_s,
         u"Sign-in failed (server error 201). Please try again."_s},
        {"no body", answer(""), none, noResponse},
        {"no JSON", answer("{\"token\":"), unparsed, unreadable},
        {"an array", answer("[]"), odd, unexpected},
        {"no token", answer(R"({"user":{"id":"u"}})"), odd, unexpected},
        {"a token of another kind", answer(R"({"token":1,"user":{"id":"u"}})"), odd, unexpected},
        {"a user of another kind", answer(R"({"token":"t","user":"u"})"), odd, unexpected},
        {"a user without id", answer(R"({"token":"t","user":{"email":"e"}})"), unparsed, unreadable},
        {"an e-mail of another kind", answer(R"({"token":"t","user":{"id":"u","email":1}})"), unparsed,
         unreadable},
    };
    for (const auto &[name, outcome, logLine, message] : rows) {
        const auto result = exchangeResult(outcome);
        ASSERT_FALSE(result) << name;
        EXPECT_TRUE(result.error().logLine.startsWith(logLine))
            << name << result.error().logLine.toStdString();
        EXPECT_EQ(result.error().message, message) << name;
    }
}

TEST_F(AuthManagerTest, EndsAnAttemptThatBringsNoTokenOfItsOwn) {
    struct Row {
        const char *name;
        WebAuthentication::Outcome outcome;
        QString logLine;
        QString message; // none where the person knows
    };
    const auto failure = [](Kind kind) {
        return failed(WebAuthenticationFailure{kind, u"The page is gone."_s});
    };
    const QString missing = u"Missing id_token in callback URL"_s;
    const QString noToken = u"Sign-in failed — no token received from Apple. Please try again."_s;
    const Row rows[] = {{"no address", u"velmo://a b%zz"_s, u"Failed to parse callback URL"_s,
                         u"Sign-in failed — invalid callback. Please try again."_s},
                        {"no items", u"velmo://auth"_s, missing, noToken},
                        {"another item", u"velmo://auth?token=id"_s, missing, noToken},
                        {"no value", u"velmo://auth?id_token"_s, missing, noToken},
                        {"of another attempt", u"velmo://auth?id_token=id&state=other"_s, missing, noToken},
                        {"of no attempt", u"velmo://auth?id_token=id&state="_s, missing, noToken},
                        {"cancelled", failure(Kind::Cancelled), u"User cancelled sign-in"_s, {}},
                        {"failed", failure(Kind::Other), u"Web auth error: The page is gone."_s, {}},
                        {"not started", failure(Kind::NotStarted), u"Failed to start web auth session"_s, {}},
                        {"no callback", std::optional<QString>(), u"No callback URL received"_s, {}}};
    for (const Row &row : rows) {
        startAttempt();
        log.clear();
        std::exchange(web.complete, {})(row.outcome);
        EXPECT_TRUE(auth->isLoading()) << row.name; // not before the next turn
        settle();
        EXPECT_EQ(log.lines(), QStringList{authLine(row.logLine)}) << row.name;
        EXPECT_EQ(auth->authError(), row.message) << row.name;
        EXPECT_FALSE(auth->isLoading()) << row.name;
    }
    EXPECT_THAT(requests(), IsEmpty());

    startAttempt();
    const QString state = QUrlQuery(QUrl(web.address)).queryItemValue(u"state"_s);
    callback(u"velmo://auth?id_token=id&state="_s + state);
    EXPECT_THAT(requests(), ::testing::SizeIs(1));
}

TEST_F(AuthManagerTest, ListensOnlyToTheLastAttempt) {
    server.answer(kExchange, 500, "");
    startAttempt();
    const auto first = web.complete;
    startAttempt();
    first(u"velmo://auth?id_token=id"_s);
    settle();
    EXPECT_THAT(log.lines(), IsEmpty());
    EXPECT_TRUE(auth->isLoading());
    auth->cancelSignIn();
    settle();
    EXPECT_EQ(log.lines(), QStringList{authLine(u"User cancelled sign-in"_s)});
    EXPECT_FALSE(auth->isLoading());
}

TEST_F(AuthManagerTest, RestoresTheSessionThatIsStored) {
    storeSession("t-0", "not JSON");
    keychain.failure = u"The keyring is locked."_s;
    createAuth();
    bool isRestored = false;
    auth->whenRestored([&] { isRestored = true; });
    settle();
    EXPECT_TRUE(isRestored);
    EXPECT_FALSE(auth->isLoggedIn());
    EXPECT_EQ(log.lines(),
              QStringList{authLine(u"The session token is out of reach: The keyring is locked."_s)});
    EXPECT_EQ(token(), std::nullopt);
    EXPECT_EQ(log.lines().size(), 1); // the same again is no news

    keychain.failure.reset();
    for (const QByteArray &none : {QByteArray(), QByteArray("\xff\xfe")}) {
        storeSession(none);
        createAuth();
        settle();
        EXPECT_FALSE(auth->isLoggedIn());
        EXPECT_THAT(requests(), IsEmpty());
    }

    storeSession("t-0", "not JSON");
    server.answer(kRefresh, 200, R"({"user":{"id":"u1","name":"Kari"}})");
    createAuth();
    settle();
    EXPECT_TRUE(auth->isLoggedIn());
    EXPECT_EQ(auth->currentUser(), (VelmoUser{u"u1"_s, {}, u"Kari"_s, {}}));
    EXPECT_EQ(preferences.data(keys::user), R"({"id":"u1","name":"Kari"})");
    EXPECT_EQ(requests(), QStringList{u"POST /api/auth/me"_s});
    EXPECT_EQ(server.requests()[0].header("Authorization"), "Bearer t-0");
}

TEST_F(AuthManagerTest, AsksAKeychainAgainThatWasLocked) {
    storeSession("t-0");
    server.answer(kRefresh, 500, "");
    keychain.failure = u"The keyring is locked."_s;
    createAuth();
    settle();
    keychain.failure.reset();
    bool isLoggedIn = false;
    auth->whenRestored([&] { isLoggedIn = auth->isLoggedIn(); });
    settle();
    EXPECT_TRUE(isLoggedIn);

    const int reads = keychain.reads;
    auth->signOut();
    settle();
    auth->whenRestored([] {});
    settle();
    EXPECT_EQ(keychain.reads, reads); // an answer is an answer
}

TEST_F(AuthManagerTest, RefreshesThoughADictationBeginsMeanwhile) {
    storeSession("t-0");
    server.answer(kRefresh, 500, "");
    createAuth();
    settle();
    std::promise<void> free;
    worker.start([isFree = free.get_future().share()] { isFree.wait(); });
    auth->refreshUser();
    auth->prepareToken(); // its read waits behind the refresh, which must not wait for it
    free.set_value();
    settle();
    EXPECT_THAT(requests(), ::testing::SizeIs(2));
}

TEST_F(AuthManagerTest, KeepsTheSessionUnlessTheServiceSaysItIsOver) {
    for (const auto &ignored : {reply(500, ""), reply(200, "[]"), reply(200, R"({"user":{"name":"x"}})"),
                                reply(403, R"({"user":{"id":"u2"}})")}) {
        storeSession("t-0");
        server.react(kRefresh, {ignored});
        createAuth();
        settle();
        EXPECT_EQ(auth->currentUser(), (VelmoUser{u"u1"_s, {}, {}, {}})) << ignored.bytes.toStdString();
        EXPECT_THAT(log.lines(), IsEmpty());
    }
    server.answer(kRefresh, 401, "");
    createAuth();
    settle();
    EXPECT_FALSE(auth->isLoggedIn());
    EXPECT_EQ(auth->currentUser(), std::nullopt);
    EXPECT_EQ(log.lines(),
              QStringList({authLine(u"Token expired, signing out"_s), authLine(u"Signed out"_s)}));
    EXPECT_EQ(storedToken(), QByteArray());
    EXPECT_EQ(preferences.data(keys::user), std::nullopt);
}

TEST_F(AuthManagerTest, ForgetsTheSessionAtOnceEvenIfTheKeychainRefuses) {
    signIn();
    keychain.failure = u"The keyring is locked."_s;
    auth->signOut();
    EXPECT_EQ(token(), std::nullopt);
    settle();
    EXPECT_EQ(storedToken(), "t-1");
    keychain.failure.reset();
    EXPECT_EQ(token(), std::nullopt);
    EXPECT_FALSE(auth->isLoggedIn());
    EXPECT_EQ(log.lines().count(authLine(u"Signed out"_s)), 1);

    log.clear();
    signIn();
    EXPECT_EQ(token(), u"t-1"_s);
}

TEST_F(AuthManagerTest, ChangesNothingForASessionThatIsOver) {
    signIn();
    for (const auto &late : {reply(401, ""), reply(200, R"({"user":{"id":"u2"}})")}) {
        server.react(kRefresh, {late});
        auth->refreshUser();
        awaitAnswers();
        auth->signOut();
        settle();
        EXPECT_EQ(preferences.data(keys::user), std::nullopt);
        EXPECT_EQ(auth->currentUser(), std::nullopt);
        EXPECT_EQ(log.lines().filter(u"expired"_s), QStringList());
    }

    startAttempt();
    std::exchange(web.complete, {})(u"velmo://auth?id_token=id"_s);
    queue.runPosted(); // the exchange goes out
    awaitAnswers();
    queue.runPosted(); // the token is stored
    worker.waitForDone();
    auth->signOut();
    settle();
    EXPECT_FALSE(auth->isLoggedIn());
    EXPECT_FALSE(auth->isLoading());
    EXPECT_EQ(preferences.data(keys::user), std::nullopt);
    EXPECT_EQ(storedToken(), QByteArray());
}

TEST_F(AuthManagerTest, DropsTheAnswerOfASignInThatIsCancelledOrSignedOutOf) {
    server.answer("/api/auth/apple", 200, kSession);
    createAuth();
    for (void (AuthManager::*const stop)() : {&AuthManager::cancelSignIn, &AuthManager::signOut}) {
        startAttempt();
        std::exchange(web.complete, {})(u"velmo://auth?id_token=id"_s);
        queue.runPosted(); // the exchange goes out
        (auth.get()->*stop)();
        awaitAnswers();
        settle();
        EXPECT_FALSE(auth->isLoggedIn());
        EXPECT_FALSE(auth->isLoading());
        EXPECT_EQ(auth->authError(), QString());
        EXPECT_EQ(storedToken(), QByteArray());
    }
}

TEST_F(AuthManagerTest, ReadsTheTokenAfreshButOncePerDictation) {
    storeSession("t-0");
    server.answer(kRefresh, 500, "");
    createAuth();
    settle();
    const auto store = [&](const char *token) { keychain.items[AuthManager::keychainKey] = token; };
    store("t-1");
    EXPECT_EQ(token(), u"t-1"_s);
    auth->prepareToken();
    settle();
    store("t-2");
    const int reads = keychain.reads;
    EXPECT_EQ(token(), u"t-1"_s);
    queue.advance(59s);
    EXPECT_EQ(token(), u"t-1"_s);
    EXPECT_EQ(keychain.reads, reads);
    queue.advance(1s);
    EXPECT_EQ(token(), u"t-2"_s);

    auth->prepareToken();
    auth->signOut();
    EXPECT_EQ(token(), std::nullopt);
}

} // namespace velmo
