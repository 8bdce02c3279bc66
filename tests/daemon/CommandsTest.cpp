#include "daemon/Fixture.h"
#include "support/Row.h"

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

const Command pause = [](Daemon &daemon) { finish(daemon.setPaused(true)); };
const Command copy = [](Daemon &daemon) { finish(daemon.applyHistory(9223372036854775807)); };
const Command unpair = [](Daemon &daemon) { finish(daemon.unpair(u"d-2%20x"_s)); };
const Command prompt = [](Daemon &daemon) { finish(daemon.promptAccessibility()); };
const QByteArray pauseLine = "POST /api/pause";
const QByteArray copyLine = "POST /api/history/apply/9223372036854775807";
const QByteArray unpairLine = "DELETE /api/devices/d-2%20x";
const QByteArray promptLine = "POST /api/accessibility/prompt";

class CommandsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void oneRequestEach() {
        const struct {
            Command command;
            QByteArray line;
            QByteArray reply = {};
            QByteArray body = {}; ///< null: none
            bool refreshes = true;
        } rows[]{
            {pause, pauseLine},
            {[](Daemon &daemon) { finish(daemon.setPaused(false)); }, "POST /api/resume"},
            {copy, copyLine},
            {[](Daemon &daemon) { finish(daemon.clearHistory()); }, "DELETE /api/history", {}, {}, false},
            {unpair, unpairLine},
            {prompt, promptLine},
            {[](Daemon &daemon) { QCOMPARE(finish(daemon.pairShow()), u"0042"_s); }, "POST /api/pair/show",
             R"({"pin":"0042"})", "{}", false},
            {[](Daemon &daemon) { QVERIFY(finish(daemon.pairConnect(u" h\u00e9 "_s, u"1\"2"_s))); },
             "POST /api/pair/connect", R"({"ok":true})", "{\"host\":\" h\u00e9 \",\"pin\":\"1\\\"2\"}"},
            {[](Daemon &daemon) {
                 finish(daemon.saveSettings(*wire::decode<std::optional<DaemonSettings>>(settingsJson)));
             },
             "PUT /api/settings", R"({"ok":true})", settingsJson}};
        for (const auto &[command, line, reply, body, refreshes] : rows) {
            const Row row(line);
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
    }

    /// These drop what goes wrong and let the refresh tell.
    void failuresThatDoNotMatter() {
        const std::pair<Command, QByteArray> commands[]{
            {pause, pauseLine}, {copy, copyLine}, {unpair, unpairLine}, {prompt, promptLine}};
        for (const auto &[command, line] : commands) {
            const Row row(line);
            Connected world;
            world.service.answer(line, {{}, 200, {}, Answer::shut});
            command(*world.daemon);
            QVERIFY(world.hasRefreshed());
        }
        // An id that is no path is not even sent.
        Connected world;
        finish(world.daemon->unpair(u"a b"_s));
        QVERIFY(world.hasRefreshed());
        QCOMPARE(world.service.seen.size(), std::size_t{4});
    }

    void saveTellsWhatTheServiceSaid() {
        const struct {
            Answer answer;
            bool fails;
            std::optional<bool> needRestart;
        } rows[]{{{R"({"ok":true})"}, false, {}},
                 {{R"({"ok":false,"need_restart":true})", 500}, false, true},
                 {{"oops", 500}, true, {}},
                 {{"null"}, true, {}}};
        for (const auto &[answer, fails, needRestart] : rows) {
            const Row row(answer.body);
            Connected world;
            world.service.answer("PUT /api/settings", answer);
            const auto outcome = outcomeOf(world.daemon->saveSettings(DaemonSettings()));
            QTRY_VERIFY(outcome->ended());
            QCOMPARE(outcome->value.has_value(), !fails);
            QCOMPARE(world.hasRefreshed(), !fails);
            if (outcome->value)
                QCOMPARE(outcome->value->need_restart, needRestart);
        }
    }

    void clearEmptiesTheListWhateverComes() {
        for (const Answer &answer : {Answer{}, Answer{{}, 500}, Answer{{}, 200, {}, Answer::shut}}) {
            Connected world;
            finish(world.daemon->setPaused(true));
            QVERIFY(!world.state().history.empty());
            world.service.answer("DELETE /api/history", answer);
            const auto outcome = outcomeOf(world.daemon->clearHistory());
            QVERIFY(world.state().history.empty());
            QTRY_VERIFY(outcome->ended());
            QVERIFY(world.state().history.empty());
            QCOMPARE(bool(outcome->failure), answer.manner == Answer::shut);
            QCOMPARE(world.service.count("GET /api/history"), 1);
            // The service says what it said before, and that counts again.
            finish(world.daemon->setPaused(true));
            QVERIFY(!world.state().history.empty());
        }
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

    void pairingFoldsEveryFailure() {
        for (const QByteArray reply : {"null", "<html>", R"({"ok":false,"error":"wrong PIN"})", ""}) {
            const Row row(reply);
            Connected world;
            world.service.answer("POST /api/pair/show", {reply});
            world.service.answer("POST /api/pair/connect", {reply});
            QCOMPARE(finish(world.daemon->pairShow()), std::nullopt);
            QVERIFY(!finish(world.daemon->pairConnect(u"h"_s, u"1"_s)));
            QCOMPARE(world.service.seen.size(), std::size_t{2});
        }
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

    void hangingCommandsLeaveTheRefreshAlive() {
        Connected world;
        world.service.answer("POST /api/pause", {{}, 200, {}, Answer::hang});
        std::vector<std::shared_ptr<Outcome<void>>> hanging;
        for (int command = 0; command < 20; ++command)
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
