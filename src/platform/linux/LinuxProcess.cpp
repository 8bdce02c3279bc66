#include "platform/linux/LinuxProcess.h"

#include "platform/linux/LinuxDesktop.h"
#include "platform/linux/desktop/SessionBus.h"
#include "platform/linux/desktop/X11.h"
#include "platform/linux/process/QuitSignals.h"
#include "platform/linux/process/TerminationHook.h"

#include <QCoreApplication>

#include <csignal>

#include <sys/stat.h>

namespace quorbit {

namespace {

void showFor(const StartRequest &request, const std::function<QWindow *()> &showWindow) {
    // On Wayland the toolkit takes the token from the environment when it raises a window.
    if (!x11::isSession() && !request.activationToken.isEmpty())
        qputenv("XDG_ACTIVATION_TOKEN", request.activationToken);
    const QWindow *window = showWindow();
    if (const auto timestamp = request.timestamp())
        x11::activate(*window, *timestamp);
    x11::endStartup(request.startupId);
}

} // namespace

LinuxProcess::LinuxProcess(Bundle bundle)
    : platform_(std::move(bundle))
    , request_(StartRequest::fromEnvironment())
    , instance_(SingleInstance::userFolder()) {}

std::unique_ptr<Desktop> LinuxProcess::makeDesktop() {
    return std::make_unique<LinuxDesktop>();
}

bool LinuxProcess::claim() {
    if (instance_.claim(request_) == SingleInstance::Role::second)
        return false;
    if (!sessionBusAnswers(std::chrono::seconds(1)))
        forgoSessionBus();
    return true;
}

bool LinuxProcess::isStartedBySession() const {
    return !qEnvironmentVariableIsEmpty("DESKTOP_AUTOSTART_ID");
}

void LinuxProcess::finishStart(std::function<QWindow *()> showWindow) {
    QObject::connect(&instance_, &SingleInstance::startedAgain, qApp,
                     [show = std::move(showWindow)](const StartRequest &request) { showFor(request, show); });
    QObject::connect(qApp, &QCoreApplication::aboutToQuit, &instance_, &SingleInstance::close);
    instance_.listen();
    // The toolkit ends the start-up notification with the first window, which may be long in coming.
    x11::endStartup(request_.startupId);
}

void LinuxProcess::callAtEnd(std::function<void()> terminate) {
    new TerminationHook(std::move(terminate), qApp);
    endLoopAtQuitSignals();
}

std::unique_ptr<Process> startNativeProcess(const QString &version, int argc, char **argv) {
    // SIGPIPE: whoever reads what this program prints may end before it.
    std::signal(SIGPIPE, SIG_IGN);
    // SIGXFSZ: writing past the limit of a file's size shall fail with EFBIG instead of ending the program.
    std::signal(SIGXFSZ, SIG_IGN);
    // umask: whatever this program makes, nobody but the user and the user's group may change it.
    ::umask(::umask(0) | S_IWOTH);

    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments.append(QString::fromLocal8Bit(argv[i]));
    return std::make_unique<LinuxProcess>(Bundle::ofThisProcess(version, arguments));
}

} // namespace quorbit
