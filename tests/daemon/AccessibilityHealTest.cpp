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

using Flag = std::optional<bool>;

ServiceState stateWith(Flag kvm, std::optional<Flag> granted) {
    ServiceState state;
    if (kvm)
        state.settings.emplace().kvm_enabled = *kvm;
    if (granted)
        state.status.emplace().accessibility_granted = *granted;
    return state;
}

class AccessibilityHealTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void actsOnlyOnAMissingPermissionThatIsNeeded() {
        for (const Flag kvm : {Flag(), Flag(false), Flag(true)}) {
            for (const auto permission :
                 std::initializer_list<std::optional<Flag>>{std::nullopt, Flag(), Flag(false), Flag(true)}) {
                const auto state = stateWith(kvm, permission);
                FakeClock clock;
                clock.uptimeAtStart = 120;
                FakeDefaults defaults;
                defaults.values[countKey] = qint64{7}; // of another boot
                int relaunches = 0;
                AccessibilityHeal heal(defaults, clock, [&] { ++relaunches; });
                heal.permissionsChanged(state);
                heal.refreshed(state);
                heal.refreshed(state);
                const bool acts = kvm == true && permission == Flag(false);
                const bool forgets = kvm == true && permission == Flag(true);
                if (acts) // once that is decided, the count stays
                    heal.refreshed(stateWith(true, std::optional(true)));
                QCOMPARE(clock.pending(), acts ? (std::vector<FakeClock::Delay>{800ms, 6000ms})
                                               : std::vector<FakeClock::Delay>());
                QCOMPARE(defaults.contains(countKey), !forgets);
                QCOMPARE(defaults.integer(countKey), qint64{forgets ? 0 : acts ? 1 : 7});
                QCOMPARE(defaults.real(bootKey), acts ? clock.now() - 120 : 0);
                clock.advance(10s);
                QCOMPARE(relaunches, acts ? 2 : 0);
                for (const bool isThird : {false, true}) {
                    AccessibilityHeal ofALaterRun(defaults, clock, [] {});
                    ofALaterRun.refreshed(state);
                    QCOMPARE(clock.pending().size(), std::size_t{acts && !isThird});
                    QCOMPARE(defaults.integer(countKey), qint64{forgets ? 0 : acts ? 2 : 7});
                }
            }
        }
    }

    /// Else the next run would know nothing of it, and restart too.
    void restartsOnlyWhenThatIsStored() {
        FakeClock clock;
        clock.uptimeAtStart = 120;
        const double boot = clock.now() - 120;
        for (const QMap<QString, QVariant> &before :
             {QMap<QString, QVariant>(), QMap<QString, QVariant>{{bootKey, boot}, {countKey, qint64{1}}}}) {
            FakeDefaults defaults;
            defaults.values = before;
            AccessibilityHeal heal(defaults, clock, [] {});
            for (const QList<bool> &outcomes : {QList{false}, QList{true, false}}) { // of reading, of writing
                defaults.outcomes = outcomes;
                heal.refreshed(stateWith(true, std::optional(false)));
                QVERIFY(clock.pending().empty() && defaults.outcomes.isEmpty());
                QCOMPARE(defaults.values, before);
            }
            heal.refreshed(stateWith(true, std::optional(false)));
            QCOMPARE(clock.pending().size(), std::size_t{1});
            QCOMPARE(defaults.integer(countKey), before.value(countKey).toLongLong() + 1);
        }
    }

    /// Two restarts a boot, as far as two computations of its time can be told to be of one.
    void limits() {
        const struct {
            const char *name;
            double uptime;
            double storedBoot; ///< relative to the boot that is computed
            qint64 storedCount;
            qint64 count; ///< 0: no restart
        } rows[]{{"second", 120, 5, 1, 2},
                 {"far beyond", 120, -5, std::numeric_limits<qint64>::max(), 0},
                 {"6 s before, new boot", 120, -6, 2, 1},
                 {"6 s after, new boot", 120, 6, 2, 1},
                 {"not a number", 120, std::nan(""), 2, 1},
                 {"just in time", 299.9, 0, 0, 1},
                 {"too late", 300, 0, 0, 0}};
        const double now = 1'700'000'000;
        for (const auto &[name, uptime, storedBoot, storedCount, count] : rows) {
            const Row row(name);
            const double boot = now - uptime;
            const auto next = healRecord(now, uptime, {boot + storedBoot, storedCount});
            QCOMPARE(next ? next->count : 0, count);
            if (next)
                QCOMPARE(next->boot, std::abs(storedBoot) <= 5 ? boot + storedBoot : boot);
        }
    }
};

} // namespace

QTEST_GUILESS_MAIN(AccessibilityHealTest)
#include "AccessibilityHealTest.moc"
