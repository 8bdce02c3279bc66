#include "app/QuorbitApp.h"
#include "platform/SettingsDefaults.h"
#include "platform/SystemClock.h"
#include "platform/linux/LinuxPlatform.h"
#include "platform/linux/desktop/HeldKeys.h"
#include "platform/linux/desktop/SessionBus.h"
#include "platform/linux/desktop/X11.h"
#include "update/ManifestAddress.h"

#include <QApplication>

#include <array>
#include <csignal>

#include <sys/stat.h>

using namespace quorbit;

int main(int argc, char **argv) {
    // Whoever reads what this program prints may end before it.
    std::signal(SIGPIPE, SIG_IGN);
    // Whatever this program makes, nobody but the user and the user's group may change it.
    ::umask(::umask(0) | S_IWOTH);
    // A file that may not grow is a write that fails, as on a full disk, and no reason to end.
    std::signal(SIGXFSZ, SIG_IGN);
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments.append(QString::fromLocal8Bit(argv[i]));
    LinuxPlatform platform(Bundle::ofThisProcess(QStringLiteral(QUORBIT_VERSION), arguments));

    const StartRequest request = StartRequest::fromEnvironment();
    SingleInstance instance(SingleInstance::userFolder());
    if (instance.claim(request) == SingleInstance::Role::second)
        return 0;
    if (!sessionBusAnswers(std::chrono::seconds(1)))
        forgoSessionBus();

    // The program has no command line; the toolkit's options are none of its own.
    std::array<char, 8> name{"quorbit"};
    std::array<char *, 2> ownArguments{name.data(), nullptr};
    int count = 1;
    const QApplication application(count, ownArguments.data());
    QApplication::setApplicationName(QStringLiteral("quorbit"));
    QApplication::setApplicationVersion(QStringLiteral(QUORBIT_VERSION));
    QApplication::setDesktopFileName(QStringLiteral("quorbit"));

    const HeldKeys heldKeys;
    SystemClock clock;
    SettingsDefaults defaults;
    const bool startedBySession = !qEnvironmentVariableIsEmpty("DESKTOP_AUTOSTART_ID");
    QuorbitApp app(platform, defaults, clock, {manifestAddress(), !startedBySession});
    QObject::connect(&instance, &SingleInstance::startedAgain, &app, &QuorbitApp::showPanel);
    QObject::connect(&application, &QCoreApplication::aboutToQuit, &instance, &SingleInstance::close);
    instance.listen();
    // The toolkit says so with the first window, which may be long in coming.
    x11::endStartup(request.startupId);
    return QApplication::exec();
}
