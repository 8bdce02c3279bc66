#include "platform/linux/process/QuitSignals.h"

#include <QSocketNotifier>

#include <array>
#include <cerrno>
#include <csignal>

#include <fcntl.h>
#include <unistd.h>

namespace quorbit {

namespace {

/// A signal handler may do little more than write into a pipe, and can be handed nothing.
int pipeToLoop = -1;

void handle(int) {
    const int error = errno;
    const char any = 0;
    static_cast<void>(!::write(pipeToLoop, &any, 1));
    errno = error;
}

} // namespace

QuitSignals::QuitSignals(QObject *parent) : QObject(parent) {
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0)
        return; // The signals then end the program in their own way.
    pipeToLoop = ends[1];
    auto *notifier = new QSocketNotifier(ends[0], QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [this, from = ends[0]] {
        char any = 0;
        while (::read(from, &any, 1) > 0) {}
        Q_EMIT received();
    });

    struct sigaction action {};
    action.sa_handler = handle;
    action.sa_flags = SA_RESTART;
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        struct sigaction current {};
        ::sigaction(signal, nullptr, &current);
        // Started to outlive its terminal.
        if (signal == SIGHUP && current.sa_handler == SIG_IGN)
            continue;
        ::sigaction(signal, &action, nullptr);
    }
}

} // namespace quorbit
