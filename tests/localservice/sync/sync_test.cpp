#include "localservice/account/running_accounts.h"

#include "base/json.h"

#include <gtest/gtest.h>
#include <thread>

using namespace Qt::StringLiterals;

namespace velmo::localservice {

using testing::errorOf;
using testing::objectOf;
using testing::RunningAccounts;

namespace {

/// {"words": [...]} of words that are one letter each.
std::string wordsBody(const QString &letters) {
    QJsonArray words;
    for (const QChar letter : letters)
        words.append(QString(letter));
    return json::compact(QJsonObject{{u"words"_s, words}}).toStdString();
}

QString joined(const QJsonValue &words) {
    QString text;
    for (const QJsonValueConstRef word : words.toArray())
        text += word.toString();
    return text;
}

} // namespace

TEST(DictionarySync, JudgesADeviceByWhatItKnows) {
    // "1 pull" and "1 push ab": device 1 pulls, and pushes the words a and b. The end: words | tombstones.
    const std::tuple<const char *, const char *, const char *, const char *> cases[] = {
        {"nothing yet", "1 pull", "", ""},
        {"words are kept in order", "1 push cab, 2 pull", "abc", ""},
        {"removal after a push", "1 push ab, 1 push a", "a", "b"},
        {"removal after a pull", "1 push ab, 2 pull, 2 push a", "a", "b"},
        {"a device that knows nothing removes nothing", "1 push ab, 2 push c", "abc", ""},
        {"an empty device that knows nothing", "1 push ab, 2 push ", "ab", ""},
        {"an addition of another stays", "1 push a, 1 pull, 2 push b, 1 push ac", "abc", ""},
        {"all removed", "1 push ab, 1 push ", "", "ab"},
        {"added again by who removed it", "1 push ab, 1 push a, 1 push ab", "ab", ""},
        {"added again by another", "1 push ab, 1 push a, 2 pull, 2 push ab", "ab", ""},
        {"a removal between pull and push stays", "1 push ab, 1 pull, 2 pull, 2 push a, 1 push abc", "ac",
         "b"},
        {"and in later pushes without a pull", "1 push ab, 2 pull, 2 push a, 1 push abc, 1 push abcd", "acd",
         "b"},
        {"two edits cross", "1 push ab, 1 pull, 2 pull, 1 push abx, 2 push by", "bxy", "a"},
        {"who removed it does not remove it again", "1 push ab, 1 push a, 2 pull, 2 push ab, 1 push ac",
         "abc", ""},
        {"words twice in a push", "1 push aab", "ab", ""},
    };
    for (const auto &[name, steps, words, tombstones] : cases) {
        RunningAccounts service;
        const std::string tokens[] = {service.signIn("kari@example.org"), service.signIn("KARI@example.org")};
        for (const QString &step : QString::fromLatin1(steps).split(u", "_s)) {
            const std::string &token = tokens[step.front() == u'1' ? 0 : 1];
            const auto reply = step.contains(u"push") ? service.send("PUT", "/api/sync/dictionary", token,
                                                                     wordsBody(step.sliced(7)))
                                                      : service.send("GET", "/api/sync/dictionary", token);
            ASSERT_EQ(reply->status, 200) << name << reply->body;
        }
        const auto end = objectOf(*service.send("GET", "/api/sync/dictionary", tokens[0]));
        EXPECT_EQ(joined(end.value(u"words")), QLatin1StringView(words)) << name;
        EXPECT_EQ(joined(end.value(u"deletedWords")), QLatin1StringView(tombstones)) << name;
    }
}

TEST(SnippetSync, JudgesADeviceByWhatItKnows) {
    RunningAccounts service;
    const std::string first = service.signIn("kari@example.org");
    const std::string second = service.signIn("kari@example.org");
    const auto push = [&service](const std::string &token, const std::string &snippets) {
        EXPECT_EQ(
            service.send("PUT", "/api/sync/snippets", token, "{\"snippets\": [" + snippets + "]}")->status,
            200);
    };
    const auto pull = [&service](const std::string &token) {
        return service.send("GET", "/api/sync/snippets", token)->body;
    };
    const std::string brb = R"({"expansion":"be right back","id":"1","trigger":"Brb ΟΔΟΣ"})";
    const std::string omw = R"({"expansion":"on my\nway 🚗","id":"2","trigger":"omw"})";
    const std::string other = R"({"expansion":"back soon","id":"3","trigger":"bRB οδος"})";

    push(first, omw + ',' + brb);
    EXPECT_EQ(pull(first), "{\"snippets\":[" + brb + ',' + omw + "]}");
    push(second, other);
    EXPECT_EQ(pull(second), "{\"snippets\":[" + other + ',' + omw + "]}") << "one trigger, whatever its case";
    push(first, brb);
    EXPECT_EQ(pull(first), "{\"snippets\":[" + brb + "]}") << "what the device knew is removed";
    push(second, brb + ',' + omw);
    EXPECT_EQ(pull(first), "{\"snippets\":[" + brb + ',' + omw + "]}") << "there are no tombstones";
}

TEST(StatisticsSync, AddsAndKeepsTheLarger) {
    RunningAccounts service;
    const std::string token = service.signIn("kari@example.org");
    const std::tuple<const char *, const char *, const char *, const char *> cases[] = {
        {"GET", "/api/sync/stats", "", R"({"totalSessions":0,"totalWords":0})"},
        {"PUT", "/api/sync/stats", R"({"totalWords": 120, "totalSessions": 8})",
         R"({"totalSessions":8,"totalWords":120})"},
        {"PUT", "/api/sync/stats", R"({"totalWords": 100, "totalSessions": 10})",
         R"({"totalSessions":10,"totalWords":120})"},
        {"POST", "/api/sync/stats/increment", R"({"words": 5})", R"({"totalSessions":11,"totalWords":125})"},
        {"POST", "/api/sync/stats/increment", R"({"words": 0})", R"({"totalSessions":12,"totalWords":125})"},
        {"GET", "/api/sync/stats", "", R"({"totalSessions":12,"totalWords":125})"},
    };
    for (const auto &[method, path, body, reply] : cases)
        EXPECT_EQ(service.send(method, path, token, body)->body, reply) << body;
}

TEST(Sync, NamesThePieceAtFault) {
    RunningAccounts service;
    const std::string token = service.signIn("kari@example.org");
    const std::string longWord(1001, 'x');
    const std::tuple<const char *, std::string, const char *> cases[] = {
        {"dictionary", "[]", "JSON object"},
        {"dictionary", "{}", "\"words\""},
        {"dictionary", R"({"words": "a"})", "\"words\""},
        {"dictionary", R"({"words": ["a", 1]})", "\"words[1]\""},
        {"dictionary", "{\"words\": [\"" + longWord + "\"]}", "\"words[0]\""},
        {"snippets", R"({"snippets": {}})", "\"snippets\""},
        {"snippets", R"({"snippets": [1]})", "\"snippets[0].id\""},
        {"snippets", R"({"snippets": [{"id": "1", "trigger": "a"}]})", "\"snippets[0].expansion\""},
        {"snippets", R"({"snippets": [{"id": "1", "expansion": "", "trigger": ")" + longWord + "\"}]}",
         "\"snippets[0].trigger\""},
        {"stats", R"({"totalWords": 1})", "\"totalSessions\""},
        {"stats", R"({"totalWords": 12.0, "totalSessions": 1})", "\"totalWords\""},
        {"stats", R"({"totalWords": 1, "totalSessions": true})", "\"totalSessions\""},
        {"stats", R"({"totalWords": 9000000000000000, "totalSessions": 1})", "\"totalWords\""},
        {"stats/increment", "", "JSON object"},
        {"stats/increment", R"({"words": -1})", "\"words\""},
        {"stats/increment", R"({"words": "5"})", "\"words\""},
    };
    for (const auto &[list, body, piece] : cases) {
        const std::string path = std::string("/api/sync/") + list;
        const auto reply =
            service.send(path.ends_with("increment") ? "POST" : "PUT", path.c_str(), token, body);
        EXPECT_EQ(reply->status, 400) << body;
        EXPECT_TRUE(errorOf(*reply).contains(QLatin1StringView(piece)))
            << body << errorOf(*reply).toStdString();
    }
}

TEST(Sync, TakesNothingOfAListThatIsTooLong) {
    RunningAccounts service;
    const std::string token = service.signIn("kari@example.org");
    std::string all;
    for (int number = 0; number <= 10'000; ++number)
        all += (number ? "," : "") +
               (R"({"id":"1","expansion":"","trigger":")" + std::to_string(number) + "\"}");
    EXPECT_EQ(service.send("PUT", "/api/sync/snippets", token, "{\"snippets\": [" + all + "]}")->status, 400);
    EXPECT_EQ(service.send("GET", "/api/sync/snippets", token)->body, R"({"snippets":[]})");
}

TEST(Sync, WantsASession) {
    RunningAccounts service;
    const std::string token = service.signIn("kari@example.org");
    const std::pair<const char *, const char *> cases[] = {
        {"POST", "/api/auth/me"},      {"GET", "/api/sync/dictionary"},       {"PUT", "/api/sync/dictionary"},
        {"GET", "/api/sync/snippets"}, {"PUT", "/api/sync/snippets"},         {"GET", "/api/sync/stats"},
        {"PUT", "/api/sync/stats"},    {"POST", "/api/sync/stats/increment"},
    };
    for (const auto &[method, path] : cases) {
        for (const std::string &wrong :
             {std::string(), token + 'x', token.substr(1), std::string(5000, 'x')}) {
            const auto reply = service.send(method, path, wrong, "{}");
            EXPECT_EQ(reply->status, 401) << path;
            EXPECT_FALSE(errorOf(*reply).isEmpty()) << path;
        }
    }
}

TEST(Sync, KeepsUsersApart) {
    RunningAccounts service;
    const std::string kari = service.signIn("kari@example.org");
    const std::string ola = service.signIn("ola@example.org");
    ASSERT_EQ(service.send("PUT", "/api/sync/dictionary", kari, R"({"words": ["Lyse", "Sjur"]})")->status,
              200);
    ASSERT_EQ(service.send("PUT", "/api/sync/dictionary", kari, R"({"words": ["Lyse"]})")->status, 200);
    ASSERT_EQ(service
                  .send("PUT", "/api/sync/snippets", kari,
                        R"({"snippets": [{"id": "1", "trigger": "a", "expansion": "b"}]})")
                  ->status,
              200);
    ASSERT_EQ(service.send("POST", "/api/sync/stats/increment", kari, R"({"words": 5})")->status, 200);

    EXPECT_EQ(service.send("GET", "/api/sync/dictionary", ola)->body, R"({"deletedWords":[],"words":[]})");
    EXPECT_EQ(service.send("GET", "/api/sync/snippets", ola)->body, R"({"snippets":[]})");
    EXPECT_EQ(service.send("GET", "/api/sync/stats", ola)->body, R"({"totalSessions":0,"totalWords":0})");
    ASSERT_EQ(service.send("PUT", "/api/sync/dictionary", ola, R"({"words": ["Sjur"]})")->status, 200);
    ASSERT_EQ(service.send("PUT", "/api/sync/snippets", ola, R"({"snippets": []})")->status, 200);
    EXPECT_EQ(service.send("GET", "/api/sync/dictionary", kari)->body,
              R"({"deletedWords":["Sjur"],"words":["Lyse"]})");
    EXPECT_TRUE(service.send("GET", "/api/sync/snippets", kari)->body.find("\"b\"") != std::string::npos);
}

TEST(Sync, TakesSeveralDevicesAtOnce) {
    RunningAccounts service;
    constexpr int devices = 4;
    constexpr int dictations = 10;
    std::vector<std::string> tokens;
    for (int device = 0; device < devices; ++device)
        tokens.push_back(service.signIn("kari@example.org"));
    {
        std::vector<std::jthread> threads;
        for (int device = 0; device < devices; ++device)
            threads.emplace_back([&service, &token = tokens[static_cast<size_t>(device)], device] {
                const QString letter(QChar(u'a' + device));
                for (int count = 0; count < dictations; ++count) {
                    EXPECT_EQ(
                        service.send("POST", "/api/sync/stats/increment", token, R"({"words": 3})")->status,
                        200);
                    EXPECT_EQ(service.send("PUT", "/api/sync/dictionary", token, wordsBody(letter))->status,
                              200);
                }
            });
    }
    EXPECT_EQ(service.send("GET", "/api/sync/stats", tokens[0])->body,
              R"({"totalSessions":40,"totalWords":120})");
    EXPECT_EQ(service.send("GET", "/api/sync/dictionary", tokens[0])->body,
              R"({"deletedWords":[],"words":["a","b","c","d"]})");
}

} // namespace velmo::localservice
