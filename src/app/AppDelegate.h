#pragma once

#include "daemon/Daemon.h"
#include "update/UpdateChecker.h"

namespace quorbit {

/// Owns the two objects that every view shows, and starts and ends what they do.
class AppDelegate {
public:
    AppDelegate(Platform &platform, UserDefaults &defaults, Clock &clock, const QUrl &manifest,
                const QStringList &languages);

    Daemon &daemon() { return daemon_; }
    UpdateChecker &updater() { return updater_; }

    void applicationDidFinishLaunching();
    void applicationWillTerminate();

private:
    UserDefaults &defaults_;
    Daemon daemon_;
    UpdateChecker updater_;
};

} // namespace quorbit
