#include "service/http/http_client.h"
#include "service/transcription/multipart_body.h"
#include "service/transcription/transcription_client.h"
#include "store/memory_preferences.h"
#include "support/completion_probe.h"
#include "support/nobody_signed_in.h"
#include "support/scripted_server.h"

#include <QFile>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

using namespace Qt::StringLiterals;

// What lies between the end of a recording of 60 s (16 kHz, 16 bit, one channel) and its upload.

namespace {

using namespace velmo;

const TranscriptionSettings &settings() {
    static const TranscriptionSettings settings{u"no"_s, u"no,sv,da,fi,en"_s,
                                                u"Bjørn, fjord, Oslo, "_s.repeated(10)};
    return settings;
}

/// A file of a minute's length, in the page cache as a recording just written is.
QString recording() {
    static const QTemporaryDir directory;
    QString path = directory.filePath(u"recording.wav"_s);
    QFile file(path);
    if (!file.exists() && file.open(QIODevice::WriteOnly))
        file.write(QByteArray(44 + 60 * 16000 * 2, '\x55'));
    return path;
}

void buildBody(benchmark::State &state) {
    QFile file(recording());
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        state.SkipWithError("no recording");
    for (auto _ : state) {
        file.seek(0);
        benchmark::DoNotOptimize(multipartBody(newBoundary(), file.fileName(), file, settings()));
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * file.size());
}
BENCHMARK(buildBody)->Unit(benchmark::kMicrosecond);

/// From the call to the transcript, with a service on this machine that answers at once.
void uploadOverLoopback(benchmark::State &state) {
    testing::ScriptedServer server;
    server.answer("/api/transcribe", 200, "{\"text\":\"hei\"}");
    NobodySignedIn nobody;
    MemoryPreferences preferences;
    HttpClient http;
    TranscriptionClient client(*ServiceOrigin::parse(server.origin()), http, nobody, preferences);
    for (auto _ : state) {
        testing::CompletionProbe<TranscriptionResult> probe;
        client.transcribe(recording(), settings(), probe.callback());
        if (!probe.outcome())
            state.SkipWithError("the upload failed");
    }
}
BENCHMARK(uploadOverLoopback)->Unit(benchmark::kMicrosecond)->UseRealTime();

} // namespace
