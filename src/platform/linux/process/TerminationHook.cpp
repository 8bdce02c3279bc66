#include "platform/linux/process/TerminationHook.h"

#include <QCoreApplication>
#include <QThread>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <thread>
#include <utility>

#include <sys/time.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace quorbit {

namespace {

using Hook = std::shared_ptr<std::function<void()>>;

/// How long the program may take to leave.
#ifdef __SANITIZE_ADDRESS__
constexpr itimerval exitTimeout{{}, {20, 0}}; // the search for leaks comes last
#else
constexpr itimerval exitTimeout{{}, {0, 700'000}};
#endif

/// A name look-up that hangs, for one, keeps the network's threads from ending.
void endSoon() {
    std::signal(SIGALRM, [](int) { ::_exit(0); });
    ::setitimer(ITIMER_REAL, &exitTimeout, nullptr);
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
/// Whose function is called when the display is gone.
std::weak_ptr<std::function<void()>> hookOfDisplay;
/// How long the main thread may be busy, which a start on a slow machine is for a while.
constexpr std::chrono::seconds mainThreadTime(5);

/// When the display is gone, the toolkit says so and leaves: on Wayland in a thread of its own and past every
/// exit handler, on X11 through exit handlers that trip over what a start has left half made. The program
/// leaves before it.
void leaveWithDisplay(QtMsgType type, const QMessageLogContext &context, const QString &message) {
    nextHandler(type, context, message);
    const bool isGone =
        message.startsWith("The Wayland connection "_L1) || message.startsWith("The X11 connection broke"_L1);
    if (!isGone || !qApp)
        return;
    const auto leave = [] {
        if (const Hook hook = hookOfDisplay.lock())
            run(hook);
        ::_exit(1);
    };
    if (QThread::currentThread() == qApp->thread())
        leave();
    QMetaObject::invokeMethod(qApp, leave, Qt::QueuedConnection);
    std::this_thread::sleep_for(mainThreadTime);
}

} // namespace

TerminationHook::TerminationHook(std::function<void()> terminate, QObject *parent)
    : QObject(parent), terminate_(std::make_shared<std::function<void()>>(std::move(terminate))) {
    connect(qApp, &QCoreApplication::aboutToQuit, this, [this] { run(terminate_); });
    // The exit handler keeps the shared function until the very end.
    auto shared = std::make_unique<Hook>(terminate_);
    if (::on_exit(&runAtExit, shared.get()) == 0)
        static_cast<void>(shared.release());
    hookOfDisplay = terminate_;
    if (!nextHandler)
        nextHandler = qInstallMessageHandler(&leaveWithDisplay);
}

TerminationHook::~TerminationHook() {
    run(terminate_);
}

} // namespace quorbit
