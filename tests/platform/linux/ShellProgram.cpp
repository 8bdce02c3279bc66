// What only a process of its own can show. It prints what happens to it, a line each:
// shell_program FOLDER PATIENCE [hang|slow].

#include "platform/linux/process/QuitSignals.h"
#include "platform/linux/process/SingleInstance.h"
#include "platform/linux/process/TerminationHook.h"

#include <QCoreApplication>

#include <cstdio>
#include <cstdlib>
#include <thread>

using namespace quorbit;

namespace {

void say(const QByteArray &line) {
    std::printf("%s\n", line.constData());
    std::fflush(stdout);
}

/// Keeps the process from ending in its own time, as a name look-up that hangs does.
struct SlowEnd {
    ~SlowEnd() { std::this_thread::sleep_for(std::chrono::seconds(20)); }
};

} // namespace

int main(int argc, char **argv) {
    SingleInstance instance(QString::fromLocal8Bit(argv[1]), std::chrono::milliseconds(std::atoi(argv[2])));
    if (instance.claim(StartRequest::fromEnvironment()) == SingleInstance::Role::second) {
        say("second");
        return 0;
    }
    const QCoreApplication application(argc, argv);
    const QByteArray mode = argc > 3 ? argv[3] : "";
    if (mode == "hang") {
        say("first");
        std::this_thread::sleep_for(std::chrono::seconds(60));
    }
    const TerminationHook hook([] { say("hook"); });
    endLoopAtQuitSignals();
    QObject::connect(&instance, &SingleInstance::startedAgain, &application, [](const StartRequest &request) {
        say("started again " + request.activationToken + ' ' + request.startupId);
    });
    QObject::connect(&application, &QCoreApplication::aboutToQuit, &instance, &SingleInstance::close);
    instance.listen();
    if (mode == "slow")
        static const SlowEnd slow;
    say("first");
    return QCoreApplication::exec();
}
