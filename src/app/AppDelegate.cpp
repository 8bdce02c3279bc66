#include "app/AppDelegate.h"

#include "app/Relaunch.h"

namespace quorbit {

AppDelegate::AppDelegate(Platform &platform, UserDefaults &defaults, Clock &clock, const QUrl &manifest,
                         const QStringList &languages)
    : defaults_(defaults)
    , daemon_(platform, defaults, clock, [&platform] { relaunchQuorbitApp(platform); })
    , updater_(platform, clock, manifest, languages) {}

void AppDelegate::applicationDidFinishLaunching() {
    daemon_.start();
    updater_.startAutoChecking();
}

void AppDelegate::applicationWillTerminate() {
    daemon_.stop();
    defaults_.synchronize();
}

} // namespace quorbit
