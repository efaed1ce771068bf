#include "app/process/termination_signals.h"

#include <csignal>
#include <sys/signalfd.h>
#include <unistd.h>

namespace velmo {

namespace {

sigset_t terminationSignals() {
    sigset_t signals;
    sigemptyset(&signals);
    for (const int signal : {SIGTERM, SIGINT, SIGHUP})
        sigaddset(&signals, signal);
    return signals;
}

int openSignals() {
    const sigset_t signals = terminationSignals();
    return ::signalfd(-1, &signals, SFD_CLOEXEC | SFD_NONBLOCK);
}

} // namespace

void TerminationSignals::block() {
    const sigset_t signals = terminationSignals();
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
}

TerminationSignals::TerminationSignals()
    : m_descriptor(openSignals()), m_notifier(m_descriptor, QSocketNotifier::Read) {
    block();
    QObject::connect(&m_notifier, &QSocketNotifier::activated, &m_notifier, [this] {
        signalfd_siginfo received{};
        const bool came = ::read(m_descriptor, &received, sizeof received) == sizeof received;
        if (came && onTerminate)
            onTerminate();
    });
}

TerminationSignals::~TerminationSignals() {
    ::close(m_descriptor);
}

} // namespace velmo
