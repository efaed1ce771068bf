#pragma once

#include "service/http/http_client.h"
#include "service/status/service_status_client.h"
#include "service/status/service_watch.h"
#include "support/manual_main_queue.h"
#include "support/scripted_server.h"

namespace velmo::testing {

/// A service on this machine that says what the test has it say; nothing before that.
struct ServiceDesk {
    explicit ServiceDesk(MainQueue &mainQueue) : watch(client, mainQueue) {}

    /// Which engine, which languages it understands, and whether it has a language model.
    void runs(const QByteArray &engine, const QByteArray &languages,
              const QByteArray &languageModel = "null") {
        server.answer("/health", 200,
                      R"({"status":"ok","since":"2026-11-16T12:18:00Z",)" + engine + R"(,"languages":[)" +
                          languages + R"(],"languageModel":)" + languageModel + '}');
    }
    void runsWhisper(const QByteArray &languageModel = "null") {
        runs(R"("engine":"Whisper","model":"base")", R"("en","no","nn","sv","da","fi","de","is")",
             languageModel);
    }

    ScriptedServer server;
    HttpClient http;
    ServiceStatusClient client{*ServiceOrigin::parse(server.origin()), http};
    ServiceWatch watch;
};

} // namespace velmo::testing
