#include "app/Relaunch.h"

#include <QCoreApplication>

namespace quorbit {

void terminateApplication() {
    QCoreApplication::exit(0);
}

void relaunchQuorbitApp(Platform &platform) {
    platform.reopenAfterExit();
    terminateApplication();
}

} // namespace quorbit
