#include "localservice/account/running_accounts.h"
#include "localservice/http/raw_connection.h"

#include "base/json.h"

#include <QRegularExpression>
#include <QUrl>
#include <QUrlQuery>
#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace velmo::localservice {

using testing::errorOf;
using testing::objectOf;
using testing::RawConnection;
using testing::RunningAccounts;

namespace {

using Fields = std::multimap<std::string, std::string>;

class SignIn : public ::testing::Test {
protected:
    Fields authorization() const {
        return {{"client_id", "com.tarnwell.velmo.web"},
                {"redirect_uri",
                 "http://localhost:" + std::to_string(m_service.port()) + "/api/auth/apple/callback"},
                {"response_type", "code id_token"},
                {"scope", "name email"},
                {"response_mode", "form_post"},
                {"state", "9F1C<\"&%1>"}};
    }

    Fields form(const std::string &email, const std::string &given, const std::string &family) const {
        Fields fields = authorization();
        fields.insert({{"email", email}, {"given_name", given}, {"family_name", family}});
        return fields;
    }

    std::string origin() const { return "http://127.0.0.1:" + std::to_string(m_service.port()); }

    httplib::Result submit(const Fields &fields) {
        return m_service.client().Post("/auth/authorize", {{"Origin", origin()}}, fields);
    }

    /// The hidden fields of a page's form.
    static Fields hiddenFields(const std::string &page) {
        static const QRegularExpression input(u"type=\"hidden\" name=\"([^\"]*)\" value=\"([^\"]*)\""_s);
        Fields fields;
        auto found = input.globalMatch(QString::fromStdString(page));
        while (found.hasNext()) {
            const auto match = found.next();
            QString value = match.captured(2);
            for (const auto &[escaped, plain] :
                 {std::pair("&lt;", "<"), {"&gt;", ">"}, {"&quot;", "\""}, {"&amp;", "&"}})
                value.replace(QLatin1StringView(escaped), QLatin1StringView(plain));
            fields.emplace(match.captured(1).toStdString(), value.toStdString());
        }
        return fields;
    }

    /// Where the callback leads to from the page that follows the form. (The client library would decode the address
    /// in the header.)
    QUrlQuery lead(const std::string &page) {
        const std::string body = httplib::detail::params_to_query_str(hiddenFields(page));
        RawConnection connection(m_service.port());
        connection.send(
            QByteArray::fromStdString("POST /api/auth/apple/callback HTTP/1.1\r\nHost: localhost\r\n"
                                      "Content-Type: application/x-www-form-urlencoded\r\n"
                                      "Content-Length: " +
                                      std::to_string(body.size()) + "\r\n\r\n" + body));
        static const QRegularExpression location(u"^HTTP/1.1 303 [^$]*\r\nLocation: (velmo:[^\r]*)\r"_s);
        const auto found = location.match(QString::fromLatin1(connection.readAll()));
        EXPECT_TRUE(found.hasMatch());
        const QUrl url(found.captured(1), QUrl::StrictMode);
        EXPECT_TRUE(url.isValid());
        return QUrlQuery(url);
    }

    static QString item(const QUrlQuery &query, const char *name) {
        return query.queryItemValue(QLatin1StringView(name), QUrl::FullyDecoded);
    }

    httplib::Result exchange(const QString &idToken, const QJsonObject &fullName = {}) {
        QJsonObject body{{u"identityToken"_s, idToken}};
        if (!fullName.isEmpty())
            body.insert(u"fullName"_s, fullName);
        return m_service.send("POST", "/api/auth/apple", "", json::compact(body).toStdString());
    }

    QString identityToken() { return m_service.accounts().issueIdentityToken(u"kari@example.org"_s).value(); }

    RunningAccounts m_service;
};

} // namespace

TEST_F(SignIn, LeadsFromThePageToASession) {
    const auto page = m_service.client().Get("/auth/authorize", authorization(), httplib::Headers());
    ASSERT_EQ(page->status, 200);
    Fields fields = hiddenFields(page->body);
    EXPECT_EQ(fields, authorization()) << "the form hands on what it was asked";
    fields.insert(
        {{"email", " Kari@Example.org "}, {"given_name", "Kåre & Co"}, {"family_name", "Nordmann"}});

    const auto first = lead(submit(fields)->body);
    EXPECT_EQ(item(first, "state"), u"9F1C<\"&%1>"_s);
    EXPECT_EQ(item(first, "user"),
              QString::fromUtf8(R"({"name":{"firstName":"Kåre & Co","lastName":"Nordmann"}})"));
    const auto session =
        exchange(item(first, "id_token"), {{u"givenName"_s, u"Kåre"_s}, {u"familyName"_s, u"N"_s}});
    ASSERT_EQ(session->status, 200) << session->body;
    const QJsonObject user = objectOf(*session).value(u"user").toObject();
    EXPECT_EQ(user.value(u"email").toString(), u"Kari@Example.org");
    EXPECT_EQ(user.value(u"name").toString(), QString::fromUtf8("Kåre N"));
    const std::string token = objectOf(*session).value(u"token").toString().toStdString();
    EXPECT_EQ(objectOf(*m_service.send("POST", "/api/auth/me", token)).value(u"user").toObject(), user);

    const auto second = lead(submit(form("kari@example.org", "", ""))->body);
    EXPECT_FALSE(second.hasQueryItem(u"user"_s)) << "the first time only";
    const auto again = exchange(item(second, "id_token"));
    EXPECT_EQ(objectOf(*again).value(u"user").toObject(), user) << "the same account";
    EXPECT_NE(objectOf(*again).value(u"token").toString().toStdString(), token);
}

TEST_F(SignIn, SpendsAnIdentityTokenOnce) {
    const QString token = identityToken();
    EXPECT_EQ(exchange(token)->status, 200);
    EXPECT_EQ(exchange(token)->status, 401);
}

TEST_F(SignIn, ForgetsAnIdentityTokenAfterFiveMinutes) {
    const QString inTime = identityToken();
    m_service.passTime(std::chrono::seconds(1));
    const QString late = identityToken();
    m_service.passTime(std::chrono::seconds(298));
    EXPECT_EQ(exchange(inTime)->status, 200);
    m_service.passTime(std::chrono::seconds(2));
    EXPECT_EQ(exchange(late)->status, 401);
}

TEST_F(SignIn, NamesThePieceOfAnExchangeAtFault) {
    const std::tuple<const char *, int, const char *> cases[] = {
        {"", 400, "JSON object"},
        {"{}", 400, "identityToken"},
        {R"({"identityToken": 1})", 400, "identityToken"},
        {R"({"identityToken": "guessed"})", 401, "identity token"},
        {R"({"identityToken": "x", "fullName": "Kari"})", 400, "fullName"},
        {R"({"identityToken": "x", "fullName": {"givenName": 1}})", 400, "givenName"},
        {R"({"identityToken": "x", "fullName": {"familyName": "a\nb"}})", 400, "familyName"},
    };
    for (const auto &[body, status, piece] : cases) {
        const auto reply = m_service.send("POST", "/api/auth/apple", "", body);
        EXPECT_EQ(reply->status, status) << body;
        EXPECT_TRUE(errorOf(*reply).contains(QLatin1StringView(piece))) << body;
    }
}

TEST_F(SignIn, ChecksWhatThePageIsAskedFor) {
    const std::string port = std::to_string(m_service.port());
    const std::tuple<const char *, std::string, int> cases[] = {
        {"client_id", "other", 400},
        {"redirect_uri", "http://127.0.0.1:" + port + "/api/auth/apple/callback", 200},
        {"redirect_uri", "http://[::1]:" + port + "/api/auth/apple/callback", 200},
        {"redirect_uri", "http://127.0.0.1:1/api/auth/apple/callback", 400},
        {"redirect_uri", "http://evil.example:" + port + "/api/auth/apple/callback", 400},
        {"redirect_uri", "http://localhost@evil.example:" + port + "/api/auth/apple/callback", 400},
        {"redirect_uri", "https://localhost:" + port + "/api/auth/apple/callback", 400},
        {"redirect_uri", "http://localhost:" + port + "/other", 400},
        {"redirect_uri", "http://localhost:" + port + "/api/auth/apple/callback?to=x", 400},
        {"redirect_uri", "", 400},
        {"response_type", "code", 400},
        {"scope", "email", 400},
        {"response_mode", "query", 400},
        {"state", "", 400},
        {"state", std::string(201, 'x'), 400},
    };
    for (const auto &[field, value, status] : cases) {
        Fields fields = authorization();
        fields.find(field)->second = value;
        for (const auto &reply :
             {m_service.client().Get("/auth/authorize", fields, httplib::Headers()), submit(fields)}) {
            const bool isTaken = reply->status == 200 || reply->status == 422;
            EXPECT_EQ(isTaken, status == 200) << field << value << reply->status;
            EXPECT_EQ(reply->body.find(field) != std::string::npos, true) << "names " << field;
        }
    }
}

TEST_F(SignIn, SaysBesideTheFieldWhatIsWrong) {
    struct Case {
        const char *name;
        Fields fields;
        const char *field;
    };
    const Case cases[] = {
        {"no e-mail", form("", "Kari", ""), "email"},
        {"no address", form("kari", "Kari", ""), "email"},
        {"two addresses", form("a@b@c", "Kari", ""), "email"},
        {"space", form("a b@c", "Kari", ""), "email"},
        {"too long", form(std::string(250, 'x') + "@a.no", "Kari", ""), "email"},
        {"a new account without a name", form("kari@example.org", " ", ""), "given_name"},
        {"name too long", form("kari@example.org", std::string(101, 'x'), ""), "given_name"},
        {"control character", form("kari@example.org", "Kari", "a\tb"), "family_name"},
    };
    for (const Case &row : cases) {
        const auto reply = submit(row.fields);
        EXPECT_EQ(reply->status, 422) << row.name;
        const std::string field = row.field;
        EXPECT_NE(reply->body.find("aria-describedby=\"" + field + "-error\">"), std::string::npos)
            << row.name;
        EXPECT_NE(reply->body.find("id=\"" + field + "-error\""), std::string::npos) << row.name;
    }
    const auto script = submit(form("\"><script>", "<b>", "%1"));
    EXPECT_EQ(script->body.find("<script>"), std::string::npos);
    EXPECT_EQ(script->body.find("<b>"), std::string::npos);
}

TEST_F(SignIn, RefusesOtherPages) {
    auto client = m_service.client();
    const auto fields = form("kari@example.org", "Kari", "");
    const Fields answer = {{"id_token", "x"}, {"state", "y"}};
    for (const std::string &other : {std::string("http://localhost:1"), std::string("http://127.0.0.1"),
                                     std::string("https") + origin().substr(4), std::string("null")}) {
        EXPECT_EQ(client.Post("/auth/authorize", {{"Origin", other}}, fields)->status, 403) << other;
        EXPECT_EQ(client.Post("/api/auth/apple/callback", {{"Origin", other}}, answer)->status, 403) << other;
    }
    const auto page = client.Get("/auth/authorize", authorization(), httplib::Headers());
    const std::string policy = page->get_header_value("Content-Security-Policy");
    EXPECT_NE(policy.find("default-src 'none'"), std::string::npos);
    EXPECT_NE(policy.find("frame-ancestors 'none'"), std::string::npos);
    EXPECT_EQ(page->get_header_value("X-Frame-Options"), "DENY");
}

TEST_F(SignIn, TellsTheCallbackItsFaults) {
    const Fields cases[] = {
        {}, {{"id_token", "x"}}, {{"state", "x"}}, {{"id_token", "x"}, {"state", "x"}, {"user", "Kari"}}};
    for (const Fields &fields : cases) {
        const auto reply = m_service.client().Post("/api/auth/apple/callback", fields);
        EXPECT_EQ(reply->status, 400);
        EXPECT_FALSE(reply->has_header("Location"));
    }
}

TEST_F(SignIn, EndsTheOldestSessionsOfAnAccount) {
    const std::string oldest = m_service.signIn("kari@example.org");
    const std::string other = m_service.signIn("ola@example.org");
    const std::string second = m_service.signIn("kari@example.org");
    for (int count = 0; count < 49; ++count)
        (void)m_service.signIn("kari@example.org");
    EXPECT_EQ(m_service.send("POST", "/api/auth/me", oldest)->status, 401);
    EXPECT_EQ(m_service.send("POST", "/api/auth/me", second)->status, 200);
    EXPECT_EQ(m_service.send("POST", "/api/auth/me", other)->status, 200);
}

} // namespace velmo::localservice
