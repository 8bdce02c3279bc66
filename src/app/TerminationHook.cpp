#include "app/TerminationHook.h"

#include <QCoreApplication>

#include <csignal>
#include <cstdlib>
#include <utility>

#include <sys/time.h>
#include <unistd.h>

namespace quorbit {

namespace {

using Hook = std::shared_ptr<std::function<void()>>;

/// A name look-up that hangs, for one, keeps the network's threads from ending.
void endSoon() {
    std::signal(SIGALRM, [](int) { ::_exit(0); });
    const itimerval patience{{}, {0, 700'000}};
    ::setitimer(ITIMER_REAL, &patience, nullptr);
}

void run(const Hook &hook) {
    const auto terminate = std::exchange(*hook, nullptr);
    if (!terminate)
        return;
    endSoon();
    terminate();
}

void runAtExit(int, void *argument) {
    const std::unique_ptr<Hook> hook(static_cast<Hook *>(argument));
    run(*hook);
}

} // namespace

TerminationHook::TerminationHook(std::function<void()> terminate, QObject *parent)
    : QObject(parent), terminate_(std::make_shared<std::function<void()>>(std::move(terminate))) {
    connect(qApp, &QCoreApplication::aboutToQuit, this, [this] { run(terminate_); });
    // The exit handler keeps the shared function until the very end.
    auto shared = std::make_unique<Hook>(terminate_);
    if (::on_exit(&runAtExit, shared.get()) == 0)
        static_cast<void>(shared.release());
}

TerminationHook::~TerminationHook() {
    run(terminate_);
}

} // namespace quorbit
