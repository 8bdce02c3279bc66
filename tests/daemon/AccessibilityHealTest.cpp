#include "daemon/AccessibilityHeal.h"
#include "support/FakeClock.h"
#include "support/FakeDefaults.h"

#include <QTest>

#include <cmath>

using namespace quorbit;
using namespace quorbit::test;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

const QString countKey = u"axHealCount"_s;
const QString bootKey = u"axHealBoot"_s;

ServiceState stateWith(std::optional<bool> kvm, std::optional<std::optional<bool>> granted) {
    ServiceState state;
    if (kvm) {
        state.settings.emplace();
        state.settings->kvm_enabled = *kvm;
    }
    if (granted) {
        state.status.emplace();
        state.status->accessibility_granted = *granted;
    }
    return state;
}

const ServiceState missing = stateWith(true, std::optional(false));
const ServiceState granted = stateWith(true, std::optional(true));

/// One run of the program; the defaults outlive it.
struct Run {
    explicit Run(FakeDefaults &defaults, double uptime) : heal(defaults, clock, [this] { ++relaunches; }) {
        clock.uptimeAtStart = uptime;
    }

    FakeClock clock;
    int relaunches = 0;
    AccessibilityHeal heal;
};

class AccessibilityHealTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void actsOnlyOnAMissingPermissionThatIsNeeded_data() {
        QTest::addColumn<int>("kvm");        // -1: no settings
        QTest::addColumn<int>("permission"); // -1: unknown, -2: no status
        for (const int kvm : {-1, 0, 1}) {
            for (const int permission : {-2, -1, 0, 1})
                QTest::addRow("%d %d", kvm, permission) << kvm << permission;
        }
    }
    void actsOnlyOnAMissingPermissionThatIsNeeded() {
        QFETCH(int, kvm);
        QFETCH(int, permission);
        using Flag = std::optional<bool>;
        const auto state =
            stateWith(kvm < 0 ? Flag() : Flag(kvm == 1),
                      permission == -2 ? std::optional<Flag>()
                                       : std::optional(permission < 0 ? Flag() : Flag(permission == 1)));
        FakeDefaults defaults;
        defaults.values[countKey] = qint64{1};
        Run run(defaults, 120);
        run.heal.permissionsChanged(state);
        run.heal.refreshed(state);
        const bool acts = kvm == 1 && permission == 0;
        QCOMPARE(run.clock.pending(),
                 acts ? (std::vector<FakeClock::Delay>{800ms, 6000ms}) : std::vector<FakeClock::Delay>());
        QCOMPARE(defaults.contains(bootKey), acts);
        QCOMPARE(defaults.contains(countKey), !(kvm == 1 && permission == 1));
        QCOMPARE(defaults.integer(countKey), qint64{kvm == 1 && permission == 1 ? 0 : 1});
    }

    void limits_data() {
        QTest::addColumn<double>("uptime");
        QTest::addColumn<double>("storedBoot"); // relative to the boot that is computed
        QTest::addColumn<qint64>("storedCount");
        QTest::addColumn<qint64>("count"); // 0: no restart
        QTest::newRow("first ever") << 120.0 << -1e9 << qint64{0} << qint64{1};
        QTest::newRow("second") << 120.0 << 0.0 << qint64{1} << qint64{2};
        QTest::newRow("third") << 120.0 << 0.0 << qint64{2} << qint64{0};
        QTest::newRow("far beyond") << 120.0 << 0.0 << std::numeric_limits<qint64>::max() << qint64{0};
        QTest::newRow("3 s apart, same boot") << 120.0 << -3.0 << qint64{2} << qint64{0};
        QTest::newRow("5 s apart, same boot") << 120.0 << 5.0 << qint64{2} << qint64{0};
        QTest::newRow("6 s before, new boot") << 120.0 << -6.0 << qint64{2} << qint64{1};
        QTest::newRow("6 s after, new boot") << 120.0 << 6.0 << qint64{2} << qint64{1};
        QTest::newRow("not a number") << 120.0 << std::nan("") << qint64{2} << qint64{1};
        QTest::newRow("just in time") << 299.9 << 0.0 << qint64{0} << qint64{1};
        QTest::newRow("too late") << 300.0 << 0.0 << qint64{0} << qint64{0};
        QTest::newRow("ten minutes") << 600.0 << -1e9 << qint64{0} << qint64{0};
    }
    void limits() {
        QFETCH(double, uptime);
        QFETCH(double, storedBoot);
        QFETCH(qint64, storedCount);
        QFETCH(qint64, count);
        const double now = 1'700'000'000;
        const double boot = now - uptime;
        const auto next = healRecord(now, uptime, {boot + storedBoot, storedCount});
        QCOMPARE(next.has_value(), count > 0);
        if (next) {
            QCOMPARE(next->count, count);
            QCOMPARE(next->boot, std::abs(storedBoot) <= 5 ? boot + storedBoot : boot);
        }
    }

    void twoRestartsABoot() {
        FakeDefaults defaults;
        for (const qint64 count : {1, 2, 2}) {
            Run run(defaults, 120);
            const bool restarts = defaults.integer(countKey) < 2;
            run.heal.refreshed(missing);
            run.heal.refreshed(missing);
            QCOMPARE(defaults.integer(countKey), count);
            QCOMPARE(defaults.real(bootKey), 1'700'000'000.0 - 120);
            run.clock.advance(5999ms);
            QCOMPARE(run.relaunches, 0);
            run.clock.advance(1ms);
            QCOMPARE(run.relaunches, restarts ? 1 : 0);
            run.heal.refreshed(missing);
            run.clock.advance(10min);
            QCOMPARE(run.relaunches, restarts ? 1 : 0);
        }
    }

    void grantedForgetsTheCountUntilARestartIsDecided() {
        FakeDefaults defaults;
        Run run(defaults, 120);
        defaults.values[countKey] = qint64{2};
        run.heal.refreshed(granted);
        QVERIFY(!defaults.contains(countKey));
        run.heal.refreshed(missing);
        run.heal.refreshed(granted);
        QCOMPARE(defaults.integer(countKey), qint64{1});
    }

    void oneRestartForABurstOfAnnouncements() {
        FakeDefaults defaults;
        Run run(defaults, 3600);
        run.heal.permissionsChanged(granted);
        run.heal.permissionsChanged(missing);
        run.clock.advance(500ms);
        run.heal.permissionsChanged(missing);
        run.clock.advance(299ms);
        QCOMPARE(run.relaunches, 0);
        run.clock.advance(1ms);
        QCOMPARE(run.relaunches, 1);
        run.heal.permissionsChanged(missing);
        run.clock.advance(1h);
        QCOMPARE(run.relaunches, 1);
        QVERIFY(defaults.values.isEmpty());
    }
};

} // namespace

QTEST_GUILESS_MAIN(AccessibilityHealTest)
#include "AccessibilityHealTest.moc"
