#include "daemon/AccessibilityHeal.h"

#include <cmath>
#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace quorbit {

namespace {

constexpr double bootPhase = 300.0;    // seconds after boot in which a restart may help
constexpr double sameBootWithin = 5.0; // seconds by which two computations of one boot time may differ
constexpr qint64 healsPerBoot = 2;

const QString &countKey() {
    static const QString key = u"axHealCount"_s;
    return key;
}
const QString &bootKey() {
    static const QString key = u"axHealBoot"_s;
    return key;
}

} // namespace

NeededPermission neededPermission(const ServiceState &state) {
    if (!state.settings || !state.settings->kvm_enabled)
        return NeededPermission::notNeeded;
    if (!state.status || !state.status->accessibility_granted)
        return NeededPermission::notNeeded;
    return *state.status->accessibility_granted ? NeededPermission::granted : NeededPermission::missing;
}

std::optional<HealRecord> healRecord(double now, double uptime, HealRecord stored) {
    if (!(uptime < bootPhase))
        return std::nullopt;
    const double boot = now - uptime;
    // Written so that a stored value which is not a number counts as another boot.
    if (!(std::abs(boot - stored.boot) <= sameBootWithin))
        return HealRecord{boot, 1};
    if (stored.count >= healsPerBoot)
        return std::nullopt;
    return HealRecord{stored.boot, stored.count + 1};
}

AccessibilityHeal::AccessibilityHeal(UserDefaults &defaults, Clock &clock, std::function<void()> relaunch)
    : defaults_(defaults), clock_(clock), relaunch_(std::move(relaunch)) {}

void AccessibilityHeal::permissionsChanged(const ServiceState &state) {
    if (autoRestart_ || neededPermission(state) != NeededPermission::missing)
        return;
    autoRestart_ = clock_.after(800ms, relaunch_);
}

void AccessibilityHeal::refreshed(const ServiceState &state) {
    if (selfHeal_)
        return;
    const NeededPermission permission = neededPermission(state);
    if (permission == NeededPermission::granted)
        defaults_.remove(countKey());
    if (permission != NeededPermission::missing)
        return;

    const double uptime = clock_.uptime();
    if (!(uptime < bootPhase))
        return;
    // A restart that is not counted would be followed by another, and another. Where nothing can be read or
    // written the next refresh tries again.
    if (!defaults_.synchronize())
        return;
    const HealRecord stored{defaults_.real(bootKey()), defaults_.integer(countKey())};
    const auto next = healRecord(clock_.now(), uptime, stored);
    if (!next)
        return;
    keep(*next);
    if (!defaults_.synchronize()) {
        keep(stored);
        return;
    }
    selfHeal_ = clock_.after(6000ms, relaunch_);
}

void AccessibilityHeal::keep(const HealRecord &record) {
    const auto keepNumber = [this](const QString &key, auto number) {
        if (number != 0)
            defaults_.set(key, number);
        else
            defaults_.remove(key); // Absent reads as 0.
    };
    keepNumber(bootKey(), record.boot);
    keepNumber(countKey(), record.count);
}

} // namespace quorbit
