#include "daemon/AccessibilityHeal.h"
#include "support/FakeClock.h"
#include "support/FakeDefaults.h"
#include "support/Row.h"

#include <cmath>

using namespace quorbit;
using namespace quorbit::test;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

const QString countKey = u"axHealCount"_s;
const QString bootKey = u"axHealBoot"_s;

ServiceState stateWith(bool kvm, std::optional<bool> granted) {
    ServiceState state;
    state.settings.emplace().kvm_enabled = kvm;
    state.status.emplace().accessibility_granted = granted;
    return state;
}

class AccessibilityHealTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void actsOnlyOnAMissingPermissionThatIsNeeded() {
        const ServiceState missing = stateWith(true, false);
        ServiceState noSettings = missing;
        noSettings.settings.reset();
        ServiceState noStatus = missing;
        noStatus.status.reset();
        using Delays = std::vector<FakeClock::Delay>;
        const struct {
            const char *name;
            ServiceState state;
            qint64 count = 7;     ///< of restarts, afterwards; before they are 7 of another boot
            Delays restarts = {}; ///< and when, half a second after the first
        } rows[]{{.name = "no settings", .state = noSettings},
                 {.name = "no status", .state = noStatus},
                 {.name = "sharing off", .state = stateWith(false, false)},
                 {.name = "permission unknown", .state = stateWith(true, std::nullopt)},
                 {.name = "granted", .state = stateWith(true, true), .count = 0},
                 {.name = "missing", .state = missing, .count = 1, .restarts = {300ms, 5500ms}}};
        for (const auto &[name, state, count, restarts] : rows) {
            const Row row(name);
            FakeClock clock;
            clock.uptimeAtStart = 120;
            FakeDefaults defaults;
            defaults.values[countKey] = qint64{7};
            std::size_t relaunches = 0;
            AccessibilityHeal heal(defaults, clock, [&] { ++relaunches; });
            // The signals of one change come one after the other.
            heal.permissionsChanged(state);
            heal.refreshed(state);
            clock.advance(500ms);
            heal.permissionsChanged(state);
            heal.refreshed(state);
            QCOMPARE(clock.pending(), restarts);
            QCOMPARE(defaults.integer(countKey), count);
            QCOMPARE(defaults.contains(countKey), count != 0);
            QCOMPARE(defaults.real(bootKey), restarts.empty() ? 0.0 : clock.startOfTest - 120);
            clock.advance(10s);
            QCOMPARE(relaunches, restarts.size());
        }
    }

    /// Else the next run would know nothing of it, and restart too.
    void restartsOnlyWhenThatIsStored() {
        FakeClock clock;
        clock.uptimeAtStart = 120;
        FakeDefaults defaults;
        AccessibilityHeal heal(defaults, clock, [] {});
        for (const QList<bool> &outcomes : {QList{false}, QList{true, false}}) { // of reading, of writing
            defaults.outcomes = outcomes;
            heal.refreshed(stateWith(true, false));
            QVERIFY(clock.pending().empty() && defaults.values.isEmpty());
        }
        heal.refreshed(stateWith(true, false));
        QCOMPARE(clock.pending().size(), std::size_t{1});
    }

    /// Two restarts a boot, as far as two computations of its time can be told to be of one.
    void limits() {
        const struct {
            const char *name;
            double uptime = 120;
            double storedBoot = 0; ///< relative to the boot that is computed
            qint64 storedCount = 0;
            std::optional<HealRecord> next = {}; ///< none: no restart; its boot is relative, too
        } rows[]{{.name = "second", .storedBoot = 5, .storedCount = 1, .next = {{5, 2}}},
                 {.name = "third", .storedCount = 2},
                 {.name = "6 s before, new boot", .storedBoot = -6, .storedCount = 2, .next = {{0, 1}}},
                 {.name = "6 s after, new boot", .storedBoot = 6, .storedCount = 2, .next = {{0, 1}}},
                 {.name = "not a number", .storedBoot = std::nan(""), .storedCount = 2, .next = {{0, 1}}},
                 {.name = "just in time", .uptime = 299.5, .next = {{0, 1}}},
                 {.name = "too late", .uptime = 300}};
        const double now = 1'700'000'000;
        for (const auto &[name, uptime, storedBoot, storedCount, next] : rows) {
            const Row row(name);
            const double boot = now - uptime;
            auto record = healRecord(now, uptime, {boot + storedBoot, storedCount});
            if (record)
                record->boot -= boot;
            QCOMPARE(record, next);
        }
    }
};

} // namespace

QTEST_GUILESS_MAIN(AccessibilityHealTest)
#include "AccessibilityHealTest.moc"
