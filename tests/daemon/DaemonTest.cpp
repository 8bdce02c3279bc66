#include "daemon/Fixture.h"
#include "support/Row.h"

using namespace quorbit;
using namespace quorbit::test;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr const char *resources[] = {"GET /api/status", "GET /api/settings", "GET /api/devices",
                                     "GET /api/history"};

/// Rings the alarms of the launch loop one by one, until the Daemon has made up its mind.
int attemptsUntilDecided(Fixture &world) {
    int attempts = 0;
    const auto isDecided = [&world] { return world.state().connectionState != ConnectionState::starting; };
    while (QTest::qWaitFor([&] { return isDecided() || !world.alarms().empty(); }) && !isDecided() &&
           attempts < 100) {
        world.clock.advance(100ms);
        ++attempts;
    }
    return attempts;
}

/// A Daemon whose poll loop sleeps after the first refresh.
struct Polling : Fixture {
    Polling() {
        service.answerAll();
        if (!startAndPoll())
            qFatal("the service is not found");
        announced = 0;
    }
};

class DaemonTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void findsARunningService() {
        Fixture world;
        world.platform.auxiliary = u"/opt/quorbitd"_s;
        world.service.answerAll();
        QVERIFY(world.startAndPoll());
        QCOMPARE(world.state().connectionState, ConnectionState::connected);
        QVERIFY(world.platform.launched.empty());
        QCOMPARE(world.announced, 6); // the four records and, before and after them, the connection
        QCOMPARE(world.state().status, wire::decode<Status>(statusJson));
        QCOMPARE(world.state().settings, wire::decode<std::optional<DaemonSettings>>(settingsJson));
        QCOMPARE(world.state().devices, wire::decode<std::optional<std::vector<Device>>>(devicesJson));
        QCOMPARE(world.state().history, wire::decode<std::optional<std::vector<HistoryEntry>>>(historyJson));
        // The same again is announced again.
        const ServiceState before = world.state();
        QVERIFY(world.pollAgain());
        QCOMPARE(world.announced, 6 + 5);
        QCOMPARE(world.state(), before);
        const auto requests = world.service.seen.size();
        world.daemon->stop();
        QVERIFY(world.clock.pending().empty());
        QCOMPARE(world.service.seen.size(), requests);
    }

    void launchesAndWaits() {
        const struct {
            const char *name;
            std::optional<QString> bundled;
            QString launched;
            bool isStale; ///< its files; else the service has no status yet
        } rows[]{{.name = "bundled",
                  .bundled = u"/opt/bundle/helper"_s,
                  .launched = u"/opt/bundle/helper"_s,
                  .isStale = true},
                 {.name = "beside the program",
                  .bundled = {},
                  .launched = u"/opt/own/quorbitd"_s,
                  .isStale = false}};
        for (const auto &[name, bundled, launched, isStale] : rows) {
            const Row row(name);
            Fixture world;
            world.platform.auxiliary = bundled;
            world.platform.executable = u"/opt/own/quorbit"_s;
            world.service.answer("GET /api/status", {"null"});
            if (isStale)
                world.writeFiles("http://127.0.0.1:1/");
            else
                world.writeFiles();
            world.daemon->start();
            QTRY_COMPARE(world.platform.launched.size(), std::size_t{1});
            QCOMPARE(world.platform.auxiliaryAsked, QStringList{u"quorbitd"_s});
            QCOMPARE(world.platform.launched[0]->executable, launched);
            QCOMPARE(world.platform.launched[0]->arguments, (QStringList{u"run"_s, u"--no-tray"_s}));

            QTRY_COMPARE(world.alarms(), std::vector<FakeClock::Delay>{100ms});
            world.clock.advance(100ms);
            QVERIFY(world.refreshed());
            QCOMPARE(world.state().connectionState, ConnectionState::starting);
            world.service.answerAll();
            world.writeFiles();
            QCOMPARE(attemptsUntilDecided(world), 1);
            QCOMPARE(world.state().connectionState, ConnectionState::connected);
            world.daemon->stop();
            QCOMPARE(world.platform.launched[0]->terminations, 1);
        }
    }

    void givesUpWhenNothingCanBeLaunched() {
        for (const bool isThere : {false, true}) {
            Fixture world;
            if (isThere)
                world.platform.auxiliary = u"/opt/quorbitd"_s;
            world.platform.launchError = "100%s n\xc3\xa4h %n";
            world.daemon->start();
            QTRY_COMPARE(world.state().connectionState, ConnectionState::disconnected);
            QCOMPARE(world.platform.logged,
                     isThere ? QStringList{u"[Quorbit] 启动 quorbitd 失败:100%s näh %n"_s} : QStringList());
            world.daemon->stop();
        }
    }

    void givesUpAfterFiftyAttempts() {
        Fixture world;
        world.platform.auxiliary = u"/opt/quorbitd"_s;
        world.daemon->start();
        QCOMPARE(attemptsUntilDecided(world), 50);
        QCOMPARE(world.state().connectionState, ConnectionState::disconnected);
    }

    void aCommandRevivesWhatStartUpGaveUp() {
        Fixture world;
        world.writeFiles();
        world.daemon->start();
        QTRY_COMPARE(world.state().connectionState, ConnectionState::disconnected);
        world.service.answer("GET /api/devices", {devicesJson});
        finish(world.daemon->setPaused(true));
        QCOMPARE(world.state().connectionState, ConnectionState::disconnected); // that takes a status
        QCOMPARE(world.state().devices.size(), std::size_t{1});
        world.service.answerAll();
        finish(world.daemon->setPaused(true));
        QCOMPARE(world.state().connectionState, ConnectionState::connected);
    }

    void pollsTwoSecondsAfterEachRefresh() {
        using Delays = std::vector<FakeClock::Delay>;
        Polling world;
        QCOMPARE(world.clock.pending(), Delays{2000ms});
        for (const char *resource : resources)
            QCOMPARE(world.service.count(resource), resource == resources[0] ? 2 : 1);

        // All four are out before any is answered, and the pause begins only after the last of them.
        for (const char *resource : resources)
            world.service.answer(resource, {{}, 200, {}, Answer::hang});
        world.clock.advance(2000ms);
        QTRY_COMPARE(world.service.seen.size(), std::size_t{9});
        QCOMPARE(world.clock.pending(), Delays(4, 60s));
        world.clock.advance(60s);
        QTRY_COMPARE(world.clock.pending(), Delays{2000ms});
    }

    void findsAServiceThatWasStartedAgain() {
        Polling world;
        world.service.close();
        FakeService other;
        other.answerAll();
        world.writeFiles(other.address().toEncoded());
        QVERIFY(world.pollAgain());
        QVERIFY(world.pollAgain());
        QCOMPARE(other.count("GET /api/status"), 1);
    }

    /// When it was read, and when its value is gone, each time once the views have had the time to follow.
    void theMemoryOfALargeReplyIsGivenBack() {
        Polling world;
        const auto answer = [&world](qsizetype size) {
            world.service.answer("GET /api/history", {'[' + QByteArray(size, ' ') + ']'});
        };
        const std::pair<qsizetype, int> rows[]{{100'000, 0}, {2'000'000, 0}, {2'000'000, 1},
                                               {1, 1},       {1, 2},         {1, 2}};
        for (const auto &[size, returned] : rows) {
            answer(size);
            QVERIFY(world.pollAgain());
            QCOMPARE(world.platform.memoryReturned, returned);
        }
    }

    void nullIsNoNews() {
        Polling world;
        const ServiceState before = world.state();
        for (const char *resource : resources)
            world.service.answer(resource, {"null"});
        QVERIFY(world.pollAgain());
        QCOMPARE(world.state(), before);
        // That a status is known is enough to say so again.
        QCOMPARE(world.announced, 1);
    }

    void stopDuringARefreshPublishesWhatArrived() {
        Polling world;
        world.service.answer("GET /api/status", {{}, 200, {}, Answer::hang});
        world.service.answer("GET /api/history", {"[]"});
        world.clock.advance(2000ms);
        QTRY_COMPARE(world.service.seen.size(), std::size_t{9});
        QTRY_COMPARE(world.clock.pending().size(), std::size_t{1}); // the timeout of the one that hangs
        QCOMPARE(world.announced, 0);
        world.daemon->stop();
        QCOMPARE(world.announced, 4); // all but the status
        QVERIFY(world.state().history.empty());
        QVERIFY(world.clock.pending().empty());
    }

    void refreshAndAnnouncementsReachTheHeal() {
        Fixture world;
        world.clock.uptimeAtStart = 60;
        world.service.answerAll();
        const QByteArray sharing =
            QByteArray(settingsJson).replace(R"("kvm_enabled":false)", R"("kvm_enabled":true)");
        const QByteArray missing =
            QByteArray(statusJson)
                .replace(R"("accessibility_granted":true)", R"("accessibility_granted":false)");
        world.service.answer("GET /api/settings", {sharing});
        world.service.answer("GET /api/status", {missing});
        QVERIFY(world.startAndPoll());
        world.platform.announceAccessibilityChange();
        QCOMPARE(world.alarms(), (std::vector<FakeClock::Delay>{800ms, 2000ms, 6000ms}));
        world.clock.advance(800ms);
        QCOMPARE(world.relaunches, 1);
        world.daemon.reset();
        QVERIFY(world.alarms().empty());
        world.platform.announceAccessibilityChange(); // must not reach the Daemon that is gone
    }

    void destructionDuringTheLaunch() {
        Fixture world;
        world.platform.auxiliary = u"/opt/quorbitd"_s;
        world.daemon->start();
        QTRY_COMPARE(world.clock.pending().size(), std::size_t{1});
        world.daemon.reset();
        QVERIFY(world.clock.pending().empty());
        QCOMPARE(world.platform.launched[0]->terminations, 0);
    }

    void destructionEndsEverythingAtOnce() {
        for (const QByteArray hanging : {"GET /api/status", "GET /api/history", "nothing"}) {
            const Row row(hanging);
            Fixture world;
            world.service.answerAll();
            world.service.answer(hanging, {{}, 200, {}, Answer::hang});
            world.writeFiles();
            world.daemon->start();
            const std::size_t requests = hanging == "GET /api/status" ? 1 : 5; // The first one probes.
            QTRY_COMPARE(world.service.seen.size(), requests);
            QTRY_COMPARE(world.clock.pending().size(),
                         std::size_t{1}); // the end of what hangs, or of the pause
            const auto save = outcomeOf(world.daemon->saveSettings(DaemonSettings()));
            const auto clear = outcomeOf(world.daemon->clearHistory());
            const auto show = outcomeOf(world.daemon->pairShow());
            world.announced = 0;
            world.daemon.reset();
            QVERIFY(save->stopped && clear->stopped && show->stopped);
            QVERIFY(world.announced == 0 && world.clock.pending().empty());
            QCoreApplication::processEvents(); // What was left behind would run into the Daemon that is gone.
        }
    }
};

} // namespace

QTEST_GUILESS_MAIN(DaemonTest)
#include "DaemonTest.moc"
