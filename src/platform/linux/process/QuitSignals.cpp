#include "platform/linux/process/QuitSignals.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#include <array>
#include <cerrno>
#include <csignal>

#include <fcntl.h>
#include <unistd.h>

namespace quorbit {

namespace {

/// The self-pipe trick: a signal handler may call little more than write(), and takes no argument of ours.
int pipeToLoop = -1;

void handle(int) {
    const int error = errno;
    const char any = 0;
    static_cast<void>(!::write(pipeToLoop, &any, 1));
    errno = error;
}

} // namespace

void endLoopAtQuitSignals() {
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0)
        return; // The signals then end the program in their own way.
    pipeToLoop = ends[1];
    auto *notifier = new QSocketNotifier(ends[0], QSocketNotifier::Read, qApp);
    QObject::connect(notifier, &QSocketNotifier::activated, qApp, [from = ends[0]] {
        char any = 0;
        while (::read(from, &any, 1) > 0) {}
        QCoreApplication::exit(0);
    });

    struct sigaction action {};
    action.sa_handler = handle;
    action.sa_flags = SA_RESTART;
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        struct sigaction current {};
        ::sigaction(signal, nullptr, &current);
        // Started by nohup, to outlive its terminal.
        if (signal == SIGHUP && current.sa_handler == SIG_IGN)
            continue;
        ::sigaction(signal, &action, nullptr);
    }
}

} // namespace quorbit
