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

class DaemonTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void findsARunningService() {
        Fixture world;
        world.platform.auxiliary = u"/opt/quorbitd"_s;
        world.service.answerAll();
        QVERIFY(world.startAndPoll());
        QVERIFY(world.platform.launched.empty());
        const ServiceState found = world.state();
        QCOMPARE(found.connectionState, ConnectionState::connected);
        QVERIFY(found.status && found.settings);
        QCOMPARE(found.devices.size() + found.history.size(), std::size_t{3});
        QCOMPARE(world.announced, 6); // the four records and, before and after them, the connection
        // The same again is announced again.
        QVERIFY(world.pollAgain());
        QCOMPARE(world.announced, 6 + 5);
        QCOMPARE(world.state(), found);
        world.daemon->stop();
        QVERIFY(world.clock.pending().empty());
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
            world.writeFiles();
            world.daemon->start();
            QTRY_COMPARE(world.state().connectionState, ConnectionState::disconnected);
            QCOMPARE(world.platform.logged,
                     isThere ? QStringList{u"[Quorbit] 启动 quorbitd 失败:100%s näh %n"_s} : QStringList());
            // When it comes up later, a command finds that out.
            world.service.answerAll();
            finish(world.daemon->setPaused(true));
            QCOMPARE(world.state().connectionState, ConnectionState::connected);
        }
    }

    void givesUpAfterFiftyAttempts() {
        Fixture world;
        world.platform.auxiliary = u"/opt/quorbitd"_s;
        world.daemon->start();
        QCOMPARE(attemptsUntilDecided(world), 50);
        QCOMPARE(world.state().connectionState, ConnectionState::disconnected);
    }

    void pollsTwoSecondsAfterEachRefresh() {
        using Delays = std::vector<FakeClock::Delay>;
        Polling world;
        QCOMPARE(world.clock.pending(), Delays{2000ms});
        // All four are out before any is answered, and the pause begins only after the last of them.
        for (const char *resource : resources)
            world.service.answer(resource, {{}, 200, {}, Answer::hang});
        world.clock.advance(2000ms);
        QTRY_COMPARE(world.service.seen.size(), std::size_t{4});
        QCOMPARE(world.clock.pending(), Delays(4, 60s));
        world.clock.advance(60s);
        QTRY_COMPARE(world.clock.pending(), Delays{2000ms});
    }

    void findsAServiceThatWasStartedAgainElsewhere() {
        Polling world;
        FakeService other;
        other.answerAll();
        for (const char *resource : resources) // as whoever has its port now may answer
            world.service.answer(resource, {"<html>", 404});
        world.writeFiles(other.address().toEncoded());
        QVERIFY(world.pollAgain());
        QVERIFY(world.pollAgain());
        QCOMPARE(other.count("GET /api/status"), 1);
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
