#include "base/standard_streams.h"
#include "localservice/account_service.h"
#include "localservice/chat/chat_client.h"
#include "localservice/chat/endpoints.h"
#include "localservice/chat/language_model_choice.h"
#include "localservice/embedded_speech.h"
#include "localservice/http/server.h"
#include "localservice/models/endpoints.h"
#include "localservice/models/model_downloads.h"
#include "localservice/models_command.h"
#include "localservice/options.h"
#include "localservice/speech/endpoints.h"
#include "localservice/speech/engine_pool.h"
#include "localservice/speech/live_recordings.h"
#include "localservice/speech/openai_speech_engine.h"
#include "service/http/http_client.h"
#include "service/http/loopback.h"

#include <QCoreApplication>
#include <QUrl>
#include <atomic>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <malloc.h>
#include <thread>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace velmo::localservice {

namespace {

constexpr int kFailure = 1;
constexpr int kWrongUsage = 2;

// Once asked to stop, the process is gone after this time whatever an engine is doing: a little more than the
// longest time a request takes.
constexpr unsigned kLongestStopSeconds = 40;

void print(FILE *stream, const QString &text) {
    std::fputs((text + u'\n').toUtf8().constData(), stream);
    std::fflush(stream);
}

sigset_t stopSignals() {
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGTERM);
    sigaddset(&signals, SIGINT);
    return signals;
}

/// Waits for SIGTERM or SIGINT, which every thread has blocked. From then on a second one ends the process at
/// once.
void waitForStop() {
    const sigset_t signals = stopSignals();
    int signal = 0;
    sigwait(&signals, &signal);
    ::alarm(kLongestStopSeconds);
    pthread_sigmask(SIG_UNBLOCK, &signals, nullptr);
}

QString addressOf(const QString &host, int port) {
    const bool isIpv6 = host.contains(u':');
    return u"http://%1:%2"_s.arg(isIpv6 ? u'[' + host + u']' : host, QString::number(port));
}

QString readyLine(const QString &address, const SpeechRecognition &speech) {
    QString line = u"velmo-local-service is ready on %1 (%2"_s.arg(address, speech.description());
    if (const auto work = speech.workPerSecond())
        line += u", about %1 s for 10 s of speech"_s.arg(*work * 10, 0, 'f', 1);
    return line + u')';
}

/// The key from the environment, never from the command line, which everybody on the machine can read. Over
/// plain http it goes to this machine only.
Result<OpenAiAddress, QString> address(const QString &url, const QString &model, const char *keyVariable) {
    OpenAiAddress address{url, model, qgetenv(keyVariable)};
    const QUrl parsed(url);
    if (!address.apiKey.isEmpty() && parsed.scheme() != u"https" && !isLoopbackHost(parsed.host()))
        return failed(u"%1 is set, and %2 is not https: the key could be read on its way."_s.arg(
            QLatin1StringView(keyVariable), parsed.toDisplayString()));
    return address;
}

Result<std::unique_ptr<SpeechRecognition>, QString> speechRecognition(const Options &options,
                                                                      HttpClient &http) {
    if (options.speechUrl.isEmpty())
        return std::make_unique<EmbeddedSpeech>(modelStore(), options.model);
    const auto server = address(options.speechUrl, options.speechModel, "VELMO_SPEECH_API_KEY");
    if (!server)
        return failed(server.error());
    return std::make_unique<EnginePool>(openAiSpeechEngines(http, {*server, options.detectLanguage}));
}

/// What the command line says of the language model, if it does.
Result<void, QString> fixLanguageModel(const Options &options, HttpClient &http,
                                       LanguageModelChoice &choice) {
    if (options.chatUrl.isEmpty())
        return {};
    const auto server = address(options.chatUrl, options.chatModel, "VELMO_CHAT_API_KEY");
    if (!server)
        return failed(server.error());
    choice.fix({options.chatUrl, options.chatModel}, std::make_unique<ChatClient>(http, *server));
    return {};
}

/// "llama3 at http://127.0.0.1:11434"; empty when there is none.
QString nameOf(const LanguageModelChoice::Chosen &chosen) {
    return chosen.model.isEmpty() ? chosen.address : u"%1 at %2"_s.arg(chosen.model, chosen.address);
}

int failure(const QString &sentence) {
    print(stderr, sentence);
    return kFailure;
}

/// Serves until a signal, unless there turns out to be no engine; answers the exit status.
int serveUntilStopped(Server &server, SpeechRecognition &speech, const QString &address) {
    std::atomic<bool> isStopping = false;
    std::thread serving([&server, &isStopping] {
        server.run();
        if (!isStopping)
            ::kill(::getpid(), SIGTERM); // listening failed: better gone, and restarted, than there and deaf
    });

    const auto ready = speech.waitUntilReady();
    if (ready) {
        print(stdout, readyLine(address, speech));
        waitForStop();
    }
    isStopping = true;
    server.stop();
    serving.join();
    return ready ? 0 : failure(ready.error());
}

int serve(const Options &options) {
    HttpClient http;
    const auto recognition = speechRecognition(options, http);
    if (!recognition)
        return failure(recognition.error());
    SpeechRecognition &speech = **recognition;
    LanguageModelChoice languageModel(http, options.dataDirectory + "/language-model.json"_L1);
    if (const auto fixed = fixLanguageModel(options, http, languageModel); !fixed)
        return failure(fixed.error());
    const ModelStore store = modelStore();
    ModelDownloads downloads(store);
    LiveRecordings recordings;
    Server server;
    const auto port = server.bind(options.host, options.port);
    if (!port)
        return failure(port.error());
    if (!isLoopbackHost(options.host))
        print(stderr, u"Anyone who can reach %1 can use this service."_s.arg(options.host));

    AccountDatabase database(options.dataDirectory);
    Accounts accounts(database);
    server.add(healthEndpoint(speech, [&languageModel] { return nameOf(languageModel.chosen()); }));
    server.add(rootEndpoint(speech));
    server.add(transcribeEndpoint(speech, recordings));
    server.add(wordsEndpoint(recordings));
    const auto model = [&languageModel] { return languageModel.client(); };
    server.add(processEndpoint(model));
    server.add(normalizeEndpoint(model));
    for (const Endpoint &endpoint : languageModelEndpoints(http, languageModel))
        server.add(endpoint);
    for (const Endpoint &endpoint : modelEndpoints(store, downloads))
        server.add(endpoint);
    for (const Endpoint &endpoint : accountServiceEndpoints(database, accounts))
        server.add(endpoint);
    return serveUntilStopped(server, speech, addressOf(options.host, *port));
}

/// The threads of the speech engine wait for one another by spinning, which on a busy machine keeps them from the work they
/// wait for; so they are told to spin little. Their library reads it before anything here runs, hence the second beginning.
/// Where that fails everything works all the same, more slowly.
void spinLittle(char **argv) {
    constexpr const char *variable = "GOMP_SPINCOUNT";
    if (qEnvironmentVariableIsSet(variable) || !qputenv(variable, "1000"))
        return;
    std::error_code failure;
    const auto program = std::filesystem::read_symlink("/proc/self/exe", failure);
    if (!failure)
        ::execv(program.c_str(), argv);
}

int run(const QStringList &arguments) {
    if (arguments.value(0) == u"models") {
        const sigset_t signals = stopSignals();
        pthread_sigmask(SIG_UNBLOCK, &signals, nullptr);
        return runModelsCommand(arguments.sliced(1), modelStore());
    }
    const auto options = parseOptions(arguments);
    if (!options) {
        print(stderr, options.error() + u"\nTry 'velmo-local-service --help'."_s);
        return kWrongUsage;
    }
    if (options->help) {
        print(stdout, helpText());
        return 0;
    }
    if (options->version) {
        print(stdout, QStringLiteral("velmo-local-service " VELMO_VERSION));
        return 0;
    }
    return serve(*options);
}

} // namespace

} // namespace velmo::localservice

int main(int argc, char **argv) {
    velmo::occupyStandardStreams();
    velmo::localservice::spinLittle(argv);
    // A reader or a client that went away is an answer of write(), not the end of the process.
    std::signal(SIGPIPE, SIG_IGN);
    const sigset_t signals = velmo::localservice::stopSignals();
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);

    // Each connection has a thread, and a heap for each would keep what a recording has once taken.
    ::mallopt(M_ARENA_MAX, 2); // NOLINT(concurrency-mt-unsafe): there is no other thread yet

    const QCoreApplication application(argc, argv);
    return velmo::localservice::run(QCoreApplication::arguments().sliced(1));
}
