#include "daemon/Fixture.h"
#include "support/Row.h"

using namespace quorbit;
using namespace quorbit::test;
using namespace Qt::StringLiterals;

namespace {

class CommandsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void oneRequestEach() {
        const struct {
            void (*command)(Daemon &);
            QByteArray line;
            QByteArray reply = {};
            QByteArray body = {}; ///< null: none
            bool refreshes = true;
        } rows[]{
            {[](Daemon &daemon) { finish(daemon.setPaused(true)); }, "POST /api/pause"},
            {[](Daemon &daemon) { finish(daemon.setPaused(false)); }, "POST /api/resume"},
            {[](Daemon &daemon) { finish(daemon.applyHistory(9223372036854775807)); },
             "POST /api/history/apply/9223372036854775807"},
            {[](Daemon &daemon) { finish(daemon.clearHistory()); }, "DELETE /api/history", {}, {}, false},
            {[](Daemon &daemon) { finish(daemon.unpair(u"d-2%20x"_s)); }, "DELETE /api/devices/d-2%20x"},
            {[](Daemon &daemon) { finish(daemon.promptAccessibility()); }, "POST /api/accessibility/prompt"},
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
            Polling world;
            world.service.answer(line, {reply});
            command(*world.daemon);
            QCOMPARE(world.refreshes(), refreshes ? 1 : 0);
            QCOMPARE(world.service.seen.size(), std::size_t{refreshes ? 5U : 1U});

            const SeenRequest request = world.service.seen.front();
            QCOMPARE(request.line, line);
            QCOMPARE(request.body, body);
            QCOMPARE(request.header("content-type"),
                     body.isNull() ? QByteArrayList() : QByteArrayList{"application/json"});
            QCOMPARE(request.header("content-length"), line.startsWith("DELETE")
                                                           ? QByteArrayList()
                                                           : QByteArrayList{QByteArray::number(body.size())});
        }
    }

    /// Some commands drop what goes wrong and let the refresh tell.
    void failuresThatDoNotMatter() {
        Polling world;
        world.service.answer("POST /api/pause", {{}, 200, {}, Answer::shut});
        finish(world.daemon->setPaused(true));
        QCOMPARE(world.refreshes(), 1);
        // An id that is no path is not even sent.
        finish(world.daemon->unpair(u"a b"_s));
        QCOMPARE(world.refreshes(), 2);
        QCOMPARE(world.service.seen.size(), std::size_t{9});
    }

    void saveTellsWhatTheServiceSaid() {
        Polling world;
        world.service.answer("PUT /api/settings", {"oops", 500});
        QVERIFY_EXCEPTION_THROWN(finish(world.daemon->saveSettings(DaemonSettings())), wire::DecodeError);
        QCOMPARE(world.refreshes(), 0);
        world.service.answer("PUT /api/settings", {R"({"ok":false,"need_restart":true})", 500});
        QCOMPARE(finish(world.daemon->saveSettings(DaemonSettings())).need_restart, true);
        QCOMPARE(world.refreshes(), 1);
    }

    void clearEmptiesTheListWhateverComes() {
        Polling world;
        world.service.answer("DELETE /api/history", {{}, 200, {}, Answer::hang});
        const auto outcome = outcomeOf(world.daemon->clearHistory());
        QVERIFY(world.state().history.empty());
        // A refresh meanwhile brings the list back, though the service says what it said before.
        finish(world.daemon->setPaused(true));
        QVERIFY(!world.state().history.empty());
        world.service.close();
        QTRY_VERIFY(outcome->failure);
        QVERIFY(world.state().history.empty());
    }

    void pairingFoldsEveryFailure() {
        for (const QByteArray reply : {"null", "<html>", R"({"ok":false,"error":"wrong PIN"})"}) {
            const Row row(reply);
            Polling world;
            world.service.answer("POST /api/pair/show", {reply});
            world.service.answer("POST /api/pair/connect", {reply});
            QCOMPARE(finish(world.daemon->pairShow()), std::nullopt);
            QVERIFY(!finish(world.daemon->pairConnect(u"h"_s, u"1"_s)));
            QCOMPARE(world.service.seen.size(), std::size_t{2});
        }
    }
};

} // namespace

QTEST_GUILESS_MAIN(CommandsTest)
#include "CommandsTest.moc"
