#include "daemon/Fixture.h"

using namespace quorbit;
using namespace quorbit::test;
using namespace Qt::StringLiterals;

namespace {

/// A Daemon that knows the service, but neither polls nor has fetched anything yet.
struct Connected : Fixture {
    Connected() {
        writeFiles();
        daemon->start();
        // Without an executable to start, start-up gives up and leaves the field to the commands.
        if (!QTest::qWaitFor([this] { return state().connectionState == ConnectionState::disconnected; }))
            qFatal("start-up does not end");
        service.seen.clear();
        announced.clear();
        service.answerAll();
    }
    bool hasRefreshed() const { return service.count("GET /api/status") == 1 && state().status; }
};

using Command = void (*)(Daemon &);

} // namespace

Q_DECLARE_METATYPE(Command)

namespace {

class CommandsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void oneRequestEach_data() {
        QTest::addColumn<Command>("command");
        QTest::addColumn<QByteArray>("line");
        QTest::addColumn<QByteArray>("reply");
        QTest::addColumn<QByteArray>("body"); // null: none
        QTest::addColumn<bool>("refreshes");
        const auto row = [](const char *name, Command command, const char *line, const char *reply,
                            const QByteArray &body, bool refreshes) {
            QTest::newRow(name) << command << QByteArray(line) << QByteArray(reply) << body << refreshes;
        };
        const QByteArray none;
        row(
            "pause", [](Daemon &daemon) { finish(daemon.setPaused(true)); }, "POST /api/pause", "", none,
            true);
        row(
            "resume", [](Daemon &daemon) { finish(daemon.setPaused(false)); }, "POST /api/resume", "", none,
            true);
        row(
            "apply", [](Daemon &daemon) { finish(daemon.applyHistory(42)); }, "POST /api/history/apply/42",
            "", none, true);
        row(
            "apply negative", [](Daemon &daemon) { finish(daemon.applyHistory(-3)); },
            "POST /api/history/apply/-3", "", none, true);
        row(
            "apply largest", [](Daemon &daemon) { finish(daemon.applyHistory(9223372036854775807)); },
            "POST /api/history/apply/9223372036854775807", "", none, true);
        row(
            "clear", [](Daemon &daemon) { finish(daemon.clearHistory()); }, "DELETE /api/history", "", none,
            false);
        row(
            "unpair", [](Daemon &daemon) { finish(daemon.unpair(u"d-2%20x"_s)); },
            "DELETE /api/devices/d-2%20x", "", none, true);
        row(
            "prompt", [](Daemon &daemon) { finish(daemon.promptAccessibility()); },
            "POST /api/accessibility/prompt", "", none, true);
        row(
            "show", [](Daemon &daemon) { QCOMPARE(finish(daemon.pairShow()), u"0042"_s); },
            "POST /api/pair/show", R"({"pin":"0042"})", "{}", false);
        row(
            "connect", [](Daemon &daemon) { QVERIFY(finish(daemon.pairConnect(u" h\u00e9 "_s, u"1\"2"_s))); },
            "POST /api/pair/connect", R"({"ok":true})", "{\"host\":\" h\u00e9 \",\"pin\":\"1\\\"2\"}", true);
        row(
            "save",
            [](Daemon &daemon) {
                finish(daemon.saveSettings(*wire::decode<std::optional<DaemonSettings>>(settingsJson)));
            },
            "PUT /api/settings", R"({"ok":true})", settingsJson, true);
    }
    void oneRequestEach() {
        QFETCH(Command, command);
        QFETCH(QByteArray, line);
        QFETCH(QByteArray, reply);
        QFETCH(QByteArray, body);
        QFETCH(bool, refreshes);
        Connected world;
        world.service.answer(line, {reply});
        command(*world.daemon);
        QCOMPARE(world.hasRefreshed(), refreshes);
        QCOMPARE(world.service.seen.size(), std::size_t{refreshes ? 5U : 1U});

        const SeenRequest request = world.service.seen.front();
        QCOMPARE(request.line, line);
        QCOMPARE(request.body, body);
        QCOMPARE(request.header("content-type"),
                 body.isNull() ? QByteArrayList() : QByteArrayList{"application/json"});
        QCOMPARE(request.header("content-length"), line.startsWith("DELETE")
                                                       ? QByteArrayList()
                                                       : QByteArrayList{QByteArray::number(body.size())});
        for (const SeenRequest &sent : world.service.seen) {
            QCOMPARE(sent.header("authorization"), QByteArrayList{"Bearer s3cret"});
            if (sent.line.startsWith("GET"))
                QVERIFY(sent.header("content-type").isEmpty() && sent.header("content-length").isEmpty());
        }
    }

    /// These drop what goes wrong and let the refresh tell.
    void failuresThatDoNotMatter_data() {
        QTest::addColumn<int>("status");
        QTest::addColumn<int>("manner");
        QTest::newRow("404") << 404 << int(Answer::reply);
        QTest::newRow("500") << 500 << int(Answer::reply);
        QTest::newRow("cut off") << 200 << int(Answer::cutOff);
        QTest::newRow("shut") << 200 << int(Answer::shut);
    }
    void failuresThatDoNotMatter() {
        QFETCH(int, status);
        QFETCH(int, manner);
        const Answer failure{{}, status, {}, static_cast<Answer::Manner>(manner)};
        for (const Command command :
             {Command([](Daemon &daemon) { finish(daemon.setPaused(true)); }),
              Command([](Daemon &daemon) { finish(daemon.applyHistory(1)); }),
              Command([](Daemon &daemon) { finish(daemon.unpair(u"1"_s)); }),
              Command([](Daemon &daemon) { finish(daemon.promptAccessibility()); })}) {
            Connected world;
            for (const char *line : {"POST /api/pause", "POST /api/history/apply/1", "DELETE /api/devices/1",
                                     "POST /api/accessibility/prompt"})
                world.service.answer(line, failure);
            command(*world.daemon);
            QVERIFY(world.hasRefreshed());
        }
    }

    void anIdThatIsNoPathIsNotSentButRefreshes() {
        Connected world;
        finish(world.daemon->unpair(u"a b"_s));
        QVERIFY(world.hasRefreshed());
        QCOMPARE(world.service.seen.size(), std::size_t{4});
    }

    void saveTellsWhatTheServiceSaid_data() {
        QTest::addColumn<int>("status");
        QTest::addColumn<QByteArray>("reply");
        QTest::addColumn<int>("needRestart"); // -1: absent, -2: the save fails
        QTest::newRow("ok") << 200 << QByteArray(R"({"ok":true})") << -1;
        QTest::newRow("refused, restart") << 500 << QByteArray(R"({"ok":false,"need_restart":true})") << 1;
        QTest::newRow("error page") << 500 << QByteArray("oops") << -2;
        QTest::newRow("null") << 200 << QByteArray("null") << -2;
    }
    void saveTellsWhatTheServiceSaid() {
        QFETCH(int, status);
        QFETCH(QByteArray, reply);
        QFETCH(int, needRestart);
        Connected world;
        world.service.answer("PUT /api/settings", {reply, status});
        const auto outcome = outcomeOf(world.daemon->saveSettings(DaemonSettings()));
        QTRY_VERIFY(outcome->ended());
        QCOMPARE(outcome->value.has_value(), needRestart != -2);
        QCOMPARE(world.hasRefreshed(), needRestart != -2);
        if (outcome->value)
            QCOMPARE(outcome->value->need_restart,
                     needRestart < 0 ? std::nullopt : std::optional(needRestart == 1));
    }

    void clearEmptiesTheListWhateverComes_data() {
        QTest::addColumn<int>("manner");
        QTest::addColumn<int>("status");
        QTest::newRow("done") << int(Answer::reply) << 200;
        QTest::newRow("refused") << int(Answer::reply) << 500;
        QTest::newRow("fails") << int(Answer::shut) << 200;
    }
    void clearEmptiesTheListWhateverComes() {
        QFETCH(int, manner);
        QFETCH(int, status);
        Connected world;
        finish(world.daemon->setPaused(true));
        QVERIFY(!world.state().history.empty());
        world.service.answer("DELETE /api/history", {{}, status, {}, static_cast<Answer::Manner>(manner)});
        const auto outcome = outcomeOf(world.daemon->clearHistory());
        QVERIFY(world.state().history.empty());
        QTRY_VERIFY(outcome->ended());
        QVERIFY(world.state().history.empty());
        QCOMPARE(bool(outcome->failure), manner == Answer::shut);
        QCOMPARE(world.service.count("GET /api/history"), 1);
    }

    void aRefreshMeanwhileDoesNotUndoTheClearing() {
        Connected world;
        world.service.answer("DELETE /api/history", {{}, 200, {}, Answer::hang});
        const auto outcome = outcomeOf(world.daemon->clearHistory());
        finish(world.daemon->setPaused(true));
        QVERIFY(!world.state().history.empty());
        world.service.close();
        QTRY_VERIFY(outcome->failure);
        QVERIFY(world.state().history.empty());
    }

    void pairingFoldsEveryFailure_data() {
        QTest::addColumn<QByteArray>("reply");
        QTest::newRow("null") << QByteArray("null");
        QTest::newRow("page") << QByteArray("<html>");
        QTest::newRow("refused") << QByteArray(R"({"ok":false,"error":"wrong PIN"})");
        QTest::newRow("nothing") << QByteArray();
    }
    void pairingFoldsEveryFailure() {
        QFETCH(QByteArray, reply);
        Connected world;
        world.service.answer("POST /api/pair/show", {reply});
        world.service.answer("POST /api/pair/connect", {reply});
        QCOMPARE(finish(world.daemon->pairShow()), std::nullopt);
        QVERIFY(!finish(world.daemon->pairConnect(u"h"_s, u"1"_s)));
        QCOMPARE(world.service.seen.size(), std::size_t{2});
    }

    void withoutAConnectionNothingHappens() {
        Fixture world;
        finish(world.daemon->setPaused(true));
        QVERIFY_EXCEPTION_THROWN(finish(world.daemon->saveSettings(DaemonSettings())), APIError);
        QVERIFY_EXCEPTION_THROWN(finish(world.daemon->clearHistory()), APIError);
        QCOMPARE(finish(world.daemon->pairShow()), std::nullopt);
        QCOMPARE(world.state(), ServiceState());
        QCOMPARE(world.service.connections, 0);
    }

    /// Each host has six connections; what hangs must leave some for everything else.
    void fiveHangingCommandsLeaveTheRefreshAlive() {
        Connected world;
        world.service.answer("POST /api/pause", {{}, 200, {}, Answer::hang});
        std::vector<std::shared_ptr<Outcome<void>>> hanging;
        for (int command = 0; command < 5; ++command)
            hanging.push_back(outcomeOf(world.daemon->setPaused(true)));
        finish(world.daemon->setPaused(false));
        QVERIFY(world.hasRefreshed());
        world.daemon.reset();
        for (const auto &outcome : hanging)
            QVERIFY(outcome->stopped);
    }
};

} // namespace

QTEST_GUILESS_MAIN(CommandsTest)
#include "CommandsTest.moc"
