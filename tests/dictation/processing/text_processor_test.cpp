#include "dictation/processing/text_processor.h"

#include "base/json.h"
#include "service/http/http_client.h"
#include "store/memory_preferences.h"
#include "store/preference_keys.h"
#include "support/completion_probe.h"
#include "support/fixed_token.h"
#include "support/log_capture.h"
#include "support/qt_printing.h"
#include "support/scripted_server.h"

#include <QRegularExpression>
#include <gtest/gtest.h>

namespace velmo {

namespace {

using namespace Qt::StringLiterals;
using testing::CompletionProbe;
using testing::Reaction;
using testing::ScriptedServer;

const QByteArray kNormalise = "/api/normalize-bokmal";
const QByteArray kProcess = "/api/process";

class TextProcessorTest : public ::testing::Test {
protected:
    TextProcessorTest() {
        tokens.token = u"secret"_s;
        preferences.set(keys::dictionary, u"[{\"word\":\"Grafana\"},{\"word\":\"Ålesund\"}]"_s);
        preferences.set(keys::snippets, u"[{\"trigger\":\"mvh\",\"expansion\":\"Hilsen\"}]"_s);
    }

    QString process(const QString &text, const std::optional<QString> &detected = std::nullopt) {
        TextProcessor processor(*ServiceOrigin::parse(server.origin()), http, tokens, preferences);
        CompletionProbe<ProcessedText> typed;
        processor.process(text, detected, typed.callback());
        const ProcessedText result = typed.outcome();
        http.waitUntilIdle();
        EXPECT_EQ(typed.calls(), 1);
        completedOn = typed.thread();
        lacksMode = result.lacksMode;
        return result.text;
    }

    /// The paths asked, in order.
    [[nodiscard]] QByteArrayList asked() const {
        QByteArrayList paths;
        for (const auto &request : server.requests())
            paths.append(request.method + ' ' + request.path);
        return paths;
    }

    [[nodiscard]] QJsonObject sent(std::size_t number) const {
        return json::object(server.requests().at(number).body).value_or(QJsonObject());
    }

    /// The log without its times.
    [[nodiscard]] QStringList logged() const {
        QStringList lines = log.lines();
        return lines.replaceInStrings(QRegularExpression(u"[0-9]+ms"_s), u"Nms"_s);
    }

    testing::LogCapture log;
    ScriptedServer server;
    testing::FixedToken tokens;
    MemoryPreferences preferences;
    HttpClient http;
    std::thread::id completedOn;
    bool lacksMode = false;
};

} // namespace

TEST_F(TextProcessorTest, TypesTheLocalResultBeforeItReturns) {
    EXPECT_EQ(process(u"se grafena mvh"_s), u"Se Grafana Hilsen"_s);
    EXPECT_EQ(completedOn, std::this_thread::get_id());
    EXPECT_TRUE(asked().isEmpty());
}

TEST_F(TextProcessorTest, AsksWhatItNeedsAndNothingElse) {
    using Stored = std::map<QString, PreferenceValue>;
    const Stored::value_type casual = {keys::selectedMode, u"casual"_s};
    const Stored::value_type own = {
        keys::customModes,
        uR"([{"id":"accurate","systemPrompt":"Mine"},{"id":"mine"},{"id":"mine","systemPrompt":"x"}])"_s};
    const Stored::value_type damaged = {keys::customModes, uR"([{"id":"mine","systemPrompt":"x"},3])"_s};
    const Stored::value_type mine = {keys::selectedMode, u"mine"_s};
    struct Row {
        const char *name;
        Stored preferences;
        QString text;
        std::optional<QString> detected;
        const char *asked;
    };
    const Row rows[] = {
        {"Norwegian", {}, u"det er"_s, u"no"_s, "normalize-bokmal"},
        {"Norwegian heard as Swedish", {}, u"det är"_s, u"SV"_s, "normalize-bokmal"},
        {"Danish", {}, u"det er"_s, u"da"_s, ""},
        {"Norwegian that does not look it", {}, u"hei du"_s, u"no"_s, ""},
        {"nothing detected", {}, u"det er"_s, std::nullopt, ""},
        {"primary Nynorsk", {{keys::primaryLanguage, u"nn"_s}}, u"det er"_s, u"no"_s, ""},
        {"primary nb", {{keys::primaryLanguage, u"nb"_s}}, u"det er"_s, u"nb"_s, "normalize-bokmal"},
        {"mode", {casual}, u"hei"_s, u"en"_s, "process"},
        {"mode after Bokmål", {casual}, u"det er"_s, u"no"_s, "normalize-bokmal process"},
        {"smart formatting off", {casual, {keys::smartFormatting, false}}, u"hei"_s, u"en"_s, ""},
        {"of another kind", {casual, {keys::smartFormatting, u"no"_s}}, u"hei"_s, u"en"_s, "process"},
        {"unknown mode", {{keys::selectedMode, u"gone"_s}}, u"hei"_s, u"en"_s, ""},
        {"own mode that shadows a built-in one", {own}, u"hei"_s, u"en"_s, "process"},
        {"own mode without a prompt", {own, mine}, u"hei"_s, u"en"_s, ""},
        {"stray value among own modes", {damaged, mine}, u"hei"_s, u"en"_s, ""},
        {"phantom goes to the mode too", {casual}, u"Thanks for watching."_s, u"en"_s, "process"},
    };
    server.answer(kNormalise, 200, R"({"text":"normalisert"})");
    server.answer(kProcess, 200, R"({"text":"omskrevet"})");
    for (const Row &row : rows) {
        for (const auto &[key, value] : preferences.all())
            preferences.remove(key);
        for (const auto &[key, value] : row.preferences)
            preferences.set(key, value);
        const qsizetype alreadyAsked = asked().size();
        process(row.text, row.detected);
        EXPECT_FALSE(lacksMode) << row.name;
        EXPECT_EQ(asked().mid(alreadyAsked).join(' ').replace("POST /api/", ""), row.asked) << row.name;
    }
}

TEST_F(TextProcessorTest, SendsWhatTheServiceNeeds) {
    preferences.set(keys::selectedMode, u"casual"_s);
    preferences.set(keys::deviceId, u"device"_s);
    server.answer(kNormalise, 200, R"({"text":" Det er bra\n"})");
    server.answer(kProcess, 200, R"({"text":"Se grafena mvh"})");
    EXPECT_EQ(process(u"no, det er bra"_s, u"no"_s),
              u"Se grafena mvh"_s); // as it came: no words, no snippets

    EXPECT_EQ(sent(0), (QJsonObject{{u"text"_s, u"Nå, det er bra"_s}}));
    EXPECT_EQ(sent(1).keys(), (QStringList{u"systemPrompt"_s, u"text"_s}));
    EXPECT_EQ(sent(1)[u"text"], u" Det er bra\n"_s);
    const QString prompt = sent(1)[u"systemPrompt"].toString();
    EXPECT_TRUE(prompt.startsWith(u"IMPORTANT: You are a TEXT PROCESSOR."_s));
    EXPECT_TRUE(prompt.contains(u"primary language is Norwegian (Bokmål)."_s));
    EXPECT_TRUE(prompt.contains(u"their spelling): Grafana, Ålesund\n\n"_s));
    for (const auto &request : server.requests()) {
        EXPECT_EQ(request.header("Authorization"), "Bearer secret");
        EXPECT_EQ(request.header("X-Device-Id"), "device");
        EXPECT_EQ(request.header("Content-Type"), "application/json");
    }
    EXPECT_NE(tokens.thread, std::this_thread::get_id()); // the keychain may make it wait
}

TEST_F(TextProcessorTest, FallsBackToTheLocalResult) {
    const std::pair<const char *, Reaction> answers[] = {
        {"empty text", testing::reply(200, R"({"text":""})")},
        {"text of another kind", testing::reply(200, R"({"text":5})")},
        {"no text", testing::reply(200, "{}")},
        {"no object", testing::reply(200, R"(["text"])")},
        {"no JSON", testing::reply(200, "<html>")},
        {"created", testing::reply(201, R"({"text":"x"})")},
        {"refused", testing::reply(503, R"({"error":"no"})")},
        {"cut off", {"HTTP/1.1 200 OK\r\nContent-Length: 9\r\n\r\n{", Reaction::Then::Close}},
    };
    preferences.set(keys::selectedMode, u"casual"_s);
    for (const auto &[name, reaction] : answers) {
        log.clear();
        const qsizetype alreadyAsked = asked().size();
        server.react(kNormalise, {reaction});
        server.react(kProcess, {reaction});
        EXPECT_EQ(process(u"det er grafena mvh"_s, u"no"_s), u"Det er Grafana Hilsen"_s) << name;
        EXPECT_TRUE(lacksMode) << name;
        EXPECT_EQ(asked().size(), alreadyAsked + 2) << name;
        const bool isLost = reaction.then == Reaction::Then::Close;
        EXPECT_TRUE(logged().contains(isLost ? u"🇳🇴 [Normalize] Failed after Nms: The connection was lost."_s
                                             : u"🇳🇴 [Normalize] Invalid response after Nms, falling back"_s))
            << name;
        EXPECT_TRUE(logged().contains(u"🔧 [TextProcessor] Mode processing "_s +
                                      (isLost ? u"failed after Nms: The connection was lost."_s
                                              : u"returned invalid response after Nms"_s)))
            << name;
    }
}

TEST_F(TextProcessorTest, LogsWhatTheServiceDid) {
    preferences.set(keys::selectedMode, u"casual"_s);
    server.answer(kNormalise, 200, "{\"text\":\"Å\\u030a e\\u0301\"}");
    server.answer(kProcess, 200, R"({"text":"x"})");
    process(u"det er"_s, u"no"_s);
    EXPECT_EQ(logged(), (QStringList{u"🇳🇴 [Normalize] Success in Nms (6 → 3 chars)"_s,
                                     u"⏱️ [Latency] /api/process request starting"_s,
                                     u"⏱️ [Latency] /api/process responded in Nms"_s,
                                     u"🔧 [TextProcessor] Mode processing complete"_s}));
}

TEST_F(TextProcessorTest, CompletesNothingOnceItHasEnded) {
    server.react(kNormalise, {Reaction{{}, Reaction::Then::Hold}});
    CompletionProbe<ProcessedText> typed;
    {
        TextProcessor processor(*ServiceOrigin::parse(server.origin()), http, tokens, preferences);
        processor.process(u"det er"_s, u"no"_s, typed.callback());
        server.waitForRequests(1);
    }
    EXPECT_EQ(typed.calls(), 0);
}

TEST_F(TextProcessorTest, SendsHalfASurrogatePairAsAReplacement) {
    server.answer(kNormalise, 200, R"({"text":"x"})");
    process(u"det er "_s + QChar(0xd800), u"no"_s);
    EXPECT_EQ(sent(0)[u"text"], u"Det er \ufffd"_s);
}

} // namespace velmo
