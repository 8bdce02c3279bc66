// Notes its start and end in the file named by its first argument. In its first run it asks, twice, to be
// reopened, and takes two seconds to end.

#include "platform/linux/LinuxPlatform.h"

#include <QCoreApplication>
#include <QFile>

#include <unistd.h>

int main(int argc, char **argv) {
    quorbit::LinuxPlatform platform(
        quorbit::Bundle::ofThisProcess(std::nullopt, {QString::fromLocal8Bit(argv[1])}));
    const QCoreApplication application(argc, argv);

    QFile notes(QString::fromLocal8Bit(argv[1]));
    if (!notes.open(QIODevice::Append))
        return 1;
    const bool isFirstRun = notes.size() == 0;
    const auto note = [&notes](const QByteArray &what) {
        notes.write(what + ' ' + qgetenv("QUORBIT_TEST_MARK") + '\n');
        notes.flush();
    };

    note("start");
    if (isFirstRun) {
        platform.reopenAfterExit();
        platform.reopenAfterExit();
        ::sleep(2);
    }
    note("end");
    return 0;
}
