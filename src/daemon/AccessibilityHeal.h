#pragma once

#include "daemon/ServiceState.h"
#include "platform/Clock.h"
#include "platform/UserDefaults.h"

#include <functional>
#include <memory>
#include <optional>

namespace quorbit {

/// How often the program restarted itself, and since which boot; kept across runs.
struct HealRecord {
    double boot = 0; ///< when the computer booted, in seconds since 1970-01-01 UTC
    qint64 count = 0;

    bool operator==(const HealRecord &) const = default;
};

/// Where keyboard and mouse sharing stands with the permission that it needs.
enum class NeededPermission {
    notNeeded, ///< sharing is off, or nothing is known of it or of the permission
    granted,
    missing,
};
NeededPermission neededPermission(const ServiceState &state);

/// Whether a missing permission is a reason to restart `uptime` seconds after boot: the record to store if
/// so. That is the case in the first five minutes, and twice a boot. `now` is in seconds since 1970-01-01
/// UTC.
std::optional<HealRecord> healRecord(double now, double uptime, HealRecord stored);

/// Restarts the program when the service lacks a permission that it only gains by a restart.
class AccessibilityHeal {
public:
    AccessibilityHeal(UserDefaults &defaults, Clock &clock, std::function<void()> relaunch);

    /// The system announced a change: restarts once a run, soon, if the last known state lacks the
    /// permission.
    void permissionsChanged(const ServiceState &state);
    /// A refresh ended: restarts once a run, within the limits of healRecord(), provided that the record of
    /// it was stored.
    void refreshed(const ServiceState &state);

private:
    void keep(const HealRecord &record);

    UserDefaults &defaults_;
    Clock &clock_;
    std::function<void()> relaunch_;
    /// Each is set once and never cleared: that it exists says that this run has decided.
    std::unique_ptr<Clock::Alarm> autoRestart_;
    std::unique_ptr<Clock::Alarm> selfHeal_;
};

} // namespace quorbit
