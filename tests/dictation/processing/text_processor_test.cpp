#include "dictation/processing/text_processor.h"

#include "base/json.h"
#include "service/http/http_client.h"
#include "service/wire/session_interfaces.h"
#include "store/memory_preferences.h"
#include "store/preference_keys.h"
#include "support/completion_probe.h"
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

class SignedIn final : public TokenSource {
public:
    [[nodiscard]] std::optional<QString> authToken() override {
        thread = std::this_thread::get_id();
        return u"secret"_s;
    }
    void prepareToken() override {}

    std::thread::id thread;
};

class TextProcessorTest : public ::testing::Test {
protected:
    TextProcessorTest() {
        preferences.set(keys::dictionary, u"[{\"word\":\"Grafana\"},{\"word\":\"Ålesund\"}]"_s);
        preferences.set(keys::snippets, u"[{\"trigger\":\"mvh\",\"expansion\":\"Hilsen\"}]"_s);
    }

    QString process(const QString &text, const std::optional<QString> &detected = std::nullopt) {
        TextProcessor processor(*ServiceOrigin::parse(origin.value_or(server.origin())), http, tokens,
                                preferences);
        CompletionProbe<QString> typed;
        processor.process(text, detected, typed.callback());
        QString result = typed.outcome();
        http.waitUntilIdle();
        EXPECT_EQ(typed.calls(), 1);
        completedOn = typed.thread();
        return result;
    }

    /// The paths asked, in order.
    [[nodiscard]] QList<QByteArray> asked() const {
        QList<QByteArray> paths;
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
    std::optional<QString> origin;
    SignedIn tokens;
    MemoryPreferences preferences;
    HttpClient http;
    std::thread::id completedOn;
};

} // namespace

TEST_F(TextProcessorTest, TypesTheLocalResultBeforeItReturns) {
    EXPECT_EQ(process(u"se grafena mvh"_s), u"Se Grafana Hilsen"_s);
    EXPECT_EQ(completedOn, std::this_thread::get_id());
    EXPECT_TRUE(asked().isEmpty());
}

struct Route {
    const char *name;
    std::map<QString, PreferenceValue> preferences;
    QString text;
    std::optional<QString> detected;
    QList<QByteArray> asked;

    friend void PrintTo(const Route &row, std::ostream *out) { *out << row.name; }
};

class Routing : public TextProcessorTest, public ::testing::WithParamInterface<Route> {};

TEST_P(Routing, AsksWhatItNeedsAndNothingElse) {
    const Route &row = GetParam();
    for (const auto &[key, value] : row.preferences)
        preferences.set(key, value);
    server.answer(kNormalise, 200, R"({"text":"normalisert"})");
    server.answer(kProcess, 200, R"({"text":"omskrevet"})");
    process(row.text, row.detected);
    EXPECT_EQ(asked(), row.asked);
}

const QByteArray kAskBokmal = "POST " + kNormalise;
const QByteArray kAskMode = "POST " + kProcess;
const std::pair<const QString, PreferenceValue> kCasual = {keys::selectedMode, u"casual"_s};
const auto kOwnModes =
    uR"([{"id":"accurate","systemPrompt":"Mine"},{"id":"mine"},{"id":"mine","systemPrompt":"x"}])"_s;

INSTANTIATE_TEST_SUITE_P(
    Rows, Routing,
    ::testing::Values(
        Route{"norwegian", {}, u"det er"_s, u"no"_s, {kAskBokmal}},
        Route{"norwegian_heard_as_swedish", {}, u"det är"_s, u"SV"_s, {kAskBokmal}},
        Route{"danish", {}, u"det er"_s, u"da"_s, {}},
        Route{"norwegian_that_does_not_look_it", {}, u"hei du"_s, u"no"_s, {}},
        Route{"nothing_detected", {}, u"det er"_s, std::nullopt, {}},
        Route{"primary_nynorsk", {{keys::primaryLanguage, u"nn"_s}}, u"det er"_s, u"no"_s, {}},
        Route{"primary_nb", {{keys::primaryLanguage, u"nb"_s}}, u"det er"_s, u"nb"_s, {kAskBokmal}},
        Route{"mode", {kCasual}, u"hei"_s, u"en"_s, {kAskMode}},
        Route{"mode_after_bokmal", {kCasual}, u"det er"_s, u"no"_s, {kAskBokmal, kAskMode}},
        Route{"smart_formatting_off", {kCasual, {keys::smartFormatting, false}}, u"hei"_s, u"en"_s, {}},
        Route{"smart_formatting_of_another_kind",
              {kCasual, {keys::smartFormatting, u"no"_s}},
              u"hei"_s,
              u"en"_s,
              {kAskMode}},
        Route{"unknown_mode", {{keys::selectedMode, u"gone"_s}}, u"hei"_s, u"en"_s, {}},
        Route{"own_mode_shadows_a_built_in_one",
              {{keys::customModes, kOwnModes}},
              u"hei"_s,
              u"en"_s,
              {kAskMode}},
        Route{"own_mode_without_a_prompt",
              {{keys::customModes, kOwnModes}, {keys::selectedMode, u"mine"_s}},
              u"hei"_s,
              u"en"_s,
              {}},
        Route{"stray_value_among_own_modes",
              {{keys::customModes, u"[{\"id\":\"mine\",\"systemPrompt\":\"x\"},3]"_s},
               {keys::selectedMode, u"mine"_s}},
              u"hei"_s,
              u"en"_s,
              {}},
        Route{"phantom_goes_to_the_mode_too", {kCasual}, u"Thanks for watching."_s, u"en"_s, {kAskMode}}),
    [](const auto &info) { return info.param.name; });

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

struct Answer {
    const char *name;
    Reaction reaction;
    bool isFailure = false; ///< Of the exchange, rather than an answer that is no text.

    friend void PrintTo(const Answer &row, std::ostream *out) { *out << row.name; }
};

class NoTextFromTheService : public TextProcessorTest, public ::testing::WithParamInterface<Answer> {};

TEST_P(NoTextFromTheService, FallsBackToTheLocalResult) {
    preferences.set(keys::selectedMode, u"casual"_s);
    server.react(kNormalise, {GetParam().reaction});
    server.react(kProcess, {GetParam().reaction});
    EXPECT_EQ(process(u"det er grafena mvh"_s, u"no"_s), u"Det er Grafana Hilsen"_s);
    EXPECT_EQ(asked(), (QList<QByteArray>{kAskBokmal, kAskMode}));

    const QString lost = u"The connection was lost."_s;
    const bool isFailure = GetParam().isFailure;
    EXPECT_EQ(
        logged(),
        (QStringList{isFailure ? u"🇳🇴 [Normalize] Failed after Nms: "_s + lost
                               : u"🇳🇴 [Normalize] Invalid response after Nms, falling back"_s,
                     u"⏱️ [Latency] /api/process request starting"_s,
                     isFailure ? u"🔧 [TextProcessor] Mode processing failed after Nms: "_s + lost
                               : u"🔧 [TextProcessor] Mode processing returned invalid response after Nms"_s,
                     u"📖 [Dict] Fuzzy corrected: 'grafena' → 'Grafana' (distance: 1)"_s}));
}

INSTANTIATE_TEST_SUITE_P(
    Rows, NoTextFromTheService,
    ::testing::Values(
        Answer{"empty_text", testing::reply(200, R"({"text":""})")},
        Answer{"text_of_another_kind", testing::reply(200, R"({"text":5})")},
        Answer{"no_text", testing::reply(200, "{}")}, Answer{"no_object", testing::reply(200, R"(["text"])")},
        Answer{"no_json", testing::reply(200, "<html>")},
        Answer{"created", testing::reply(201, R"({"text":"x"})")},
        Answer{"refused", testing::reply(503, R"({"error":"no"})")},
        Answer{"cut_off", {"HTTP/1.1 200 OK\r\nContent-Length: 9\r\n\r\n{", Reaction::Then::Close}, true}),
    [](const auto &info) { return info.param.name; });

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

TEST_F(TextProcessorTest, GoesOnWhereNobodyListens) {
    origin = ScriptedServer::refusingOrigin();
    EXPECT_EQ(process(u"det er mvh"_s, u"no"_s), u"Det er Hilsen"_s);
}

TEST_F(TextProcessorTest, CompletesNothingOnceItHasEnded) {
    server.react(kNormalise, {Reaction{{}, Reaction::Then::Hold}});
    CompletionProbe<QString> typed;
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
