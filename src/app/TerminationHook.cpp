#include "app/TerminationHook.h"

#include <QCoreApplication>
#include <QThread>

#include <csignal>
#include <cstdlib>
#include <thread>
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

QtMessageHandler nextHandler = nullptr;

/// When the Wayland compositor is gone, the toolkit says so in a thread of its own and leaves by _exit(),
/// past every exit handler. The thread is held up while the main one leaves in the proper way.
void exitWithCompositor(QtMsgType type, const QMessageLogContext &context, const QString &message) {
    nextHandler(type, context, message);
    if (!message.startsWith(QLatin1String("The Wayland connection broke")) || !qApp)
        return;
    const auto leave = [] { std::exit(1); };
    if (QThread::currentThread() == qApp->thread())
        leave();
    QMetaObject::invokeMethod(qApp, leave, Qt::QueuedConnection);
    std::this_thread::sleep_for(std::chrono::seconds(1));
}

} // namespace

TerminationHook::TerminationHook(std::function<void()> terminate, QObject *parent)
    : QObject(parent), terminate_(std::make_shared<std::function<void()>>(std::move(terminate))) {
    connect(qApp, &QCoreApplication::aboutToQuit, this, [this] { run(terminate_); });
    // The exit handler keeps the shared function until the very end.
    auto shared = std::make_unique<Hook>(terminate_);
    if (::on_exit(&runAtExit, shared.get()) == 0)
        static_cast<void>(shared.release());
    if (!nextHandler)
        nextHandler = qInstallMessageHandler(&exitWithCompositor);
}

TerminationHook::~TerminationHook() {
    run(terminate_);
}

} // namespace quorbit
