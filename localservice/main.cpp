#include "engine_pool.h"
#include "health_endpoint.h"
#include "options.h"
#include "pocketsphinx_engine.h"
#include "server.h"
#include "this_machine.h"
#include "transcribe_endpoint.h"

#include <QCoreApplication>
#include <csignal>
#include <cstdio>
#include <thread>
#include <unistd.h>

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

QString readyLine(const Options &options, int port, const EngineKind &kind, const EnginePool &engines) {
    const bool isIpv6 = options.host.contains(u':');
    QString line =
        QStringLiteral("velmo-local-service is ready on http://%1:%2 (%3")
            .arg(isIpv6 ? u'[' + options.host + u']' : options.host, QString::number(port), kind.description);
    if (const auto work = engines.workPerSecond())
        line += QStringLiteral(", about %1 s for 10 s of speech").arg(*work * 10, 0, 'f', 1);
    return line + u')';
}

/// Serves until a signal; answers the exit status.
int serve(const Options &options) {
    Server server;
    const auto port = server.bind(options.host, options.port);
    if (!port) {
        print(stderr, port.error());
        return kFailure;
    }
    if (!isLoopback(options.host.toStdString()))
        print(stderr, QStringLiteral("Anyone who can reach %1 can use this service.").arg(options.host));

    const EngineKind kind = pocketSphinxEngines(QStringLiteral(VELMO_SPEECH_MODEL_DIRECTORY));
    EnginePool engines(kind);
    server.add(healthEndpoint(engines));
    server.add(transcribeEndpoint(engines));
    std::thread serving([&server] { server.run(); });

    const auto ready = engines.waitUntilReady();
    if (ready) {
        print(stdout, readyLine(options, *port, kind, engines));
        waitForStop();
    } else {
        print(stderr, ready.error());
    }
    server.stop();
    serving.join();
    return ready ? 0 : kFailure;
}

int run(const QStringList &arguments) {
    const auto options = parseOptions(arguments);
    if (!options) {
        print(stderr, options.error() + QStringLiteral("\nTry 'velmo-local-service --help'."));
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
    // A reader or a client that went away is an answer of write(), not the end of the process.
    std::signal(SIGPIPE, SIG_IGN);
    const sigset_t signals = velmo::localservice::stopSignals();
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);

    const QCoreApplication application(argc, argv);
    return velmo::localservice::run(QCoreApplication::arguments().sliced(1));
}
