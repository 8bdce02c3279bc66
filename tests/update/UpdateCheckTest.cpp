#include "support/FakeClock.h"
#include "support/FakePlatform.h"
#include "support/FakeService.h"
#include "support/Row.h"
#include "update/HttpsServer.h"
#include "update/TestAuthority.h"
#include "update/UpdateChecker.h"

#include <QNetworkProxyFactory>
#include <QTest>

using namespace quorbit;
using namespace quorbit::test;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

const QByteArray newer = R"({"version":"2.0","download":{"macos":"https://host/app.dmg"},)"
                         R"("notes":{"zh":"修复","en":"Fixes"}})";
const QByteArray older = R"({"version":"1.4","download":{}})";

CheckState failed(FailureReason reason) {
    return check::Failed{reason};
}

/// A checker and everything around it; records what it publishes.
struct Setup {
    explicit Setup(const QUrl &manifest) {
        platform.version = u"1.4.1"_s;
        checker = std::make_unique<UpdateChecker>(platform, clock, manifest, QStringList{u"zh-Hans"_s});
        QObject::connect(checker.get(), &UpdateChecker::changed, checker.get(),
                         [this] { published.push_back(checker->state()); });
    }

    bool isChecking() const { return std::holds_alternative<check::Checking>(checker->state().state); }
    /// Runs one check to its end.
    CheckState check() {
        checker->check();
        [this] { QTRY_VERIFY(!isChecking()); }();
        return checker->state().state;
    }

    FakePlatform platform;
    FakeClock clock;
    std::unique_ptr<UpdateChecker> checker;
    std::vector<UpdateState> published;
};

} // namespace

class UpdateCheckTest : public QObject {
    Q_OBJECT

private:
    std::optional<TestAuthority> authority_;
    QSslConfiguration identity_;
    std::unique_ptr<HttpsServer> server_;
    FakeService plainServer_;

    QUrl manifest() const { return server_->address(u"/version.json"_s); }
    void serve(const Reaction &answer) { server_->answer(u"/version.json"_s, answer); }

private Q_SLOTS:
    void initTestCase() {
        authority_.emplace();
        trust(authority_->certificate());
        identity_ = authority_->identity(u"localhost"_s);
        plainServer_.answer("GET /version.json", {newer});
    }
    void init() { server_ = std::make_unique<HttpsServer>(identity_); }

    void tellsTheOutcome() {
        const CheckState upToDate = check::UpToDate{u"1.4.1"_s};
        const CheckState refused = failed(FailureReason::server);
        const CheckState broken = failed(FailureReason::network);
        const CheckState unreadable = failed(FailureReason::parse);
        const QByteArray huge(2LL * 1024 * 1024, ' ');
        const QByteArray plainAddress = plainServer_.address().toEncoded() + "/version.json";
        const std::tuple<const char *, Reaction, CheckState> rows[]{
            {"older", sayAndClose("HTTP/1.1 200 OK\r\n\r\n" + older), upToDate},
            {"missing, with a manifest", reply(404, newer), refused},
            {"not JSON", reply(200, "<html>"), unreadable},
            {"too large", reply(200, newer + huge), unreadable},
            {"cut off", sayAndClose(head(200, 1000, {}) + older), broken},
            {"redirect to HTTP", reply(302, {}, "Location: " + plainAddress + "\r\n"), broken}};
        for (const auto &[name, answer, outcome] : rows) {
            const Row row(name);
            serve(answer);
            Setup setup(manifest());
            QVERIFY(setup.check() == outcome);
            QVERIFY(setup.checker->state().lastChecked);
        }
        QCOMPARE(plainServer_.connections, 0);
    }

    void publishesAnUpdateStepByStep() {
        serve(reply(302, "moved", "Location: /elsewhere.json\r\nSet-Cookie: who=you; Path=/\r\n"));
        server_->answer(u"/elsewhere.json"_s, reply(200, newer));
        Setup setup(manifest());
        setup.check();

        const AvailableUpdate update{u"2.0"_s, QUrl(u"https://host/app.dmg"_s), u"修复"_s,
                                     wire::decode<Manifest>(newer)};
        std::vector<UpdateState> steps(4);
        for (int step = 0; step < 4; ++step) {
            steps[step].state = check::Checking{};
            if (step >= 1)
                steps[step].lastChecked = QDateTime::fromSecsSinceEpoch(1'700'000'000);
            if (step >= 2)
                steps[step].available = update;
        }
        steps.back().state = check::Available{update};
        QVERIFY(setup.published == steps);
        QCOMPARE(server_->requests.size(), 2);
        for (const QByteArray &head : std::as_const(server_->requests)) {
            QVERIFY(head.contains("\r\nCache-Control: no-cache\r\n"));
            QVERIFY(head.contains("\r\nAccept-Language: *\r\n"));
            for (const char *name : {"\r\ncookie:", "\r\nauthorization:", "\r\nreferer:"})
                QVERIFY2(!head.toLower().contains(name), head.constData());
        }
    }

    void offersUpdatesWithoutAnAddress() {
        for (const QByteArray download : {"{}", "{\"macos\":\"https://host:port/app.dmg\"}"}) {
            serve(reply(200, "{\"version\":\"2.0\",\"download\":" + download + "}"));
            Setup setup(manifest());
            setup.platform.version.reset(); // counts as 0.0.0
            setup.check();
            QVERIFY(setup.checker->state().available);
            QVERIFY(!setup.checker->state().available->downloadURL);
            setup.checker->downloadUpdate();
            QCOMPARE(setup.checker->state().downloadState, DownloadState::idle);
        }
    }

    void keepsAnUpdateThroughFailures() {
        Setup setup(manifest());
        serve(reply(200, newer));
        setup.check();
        const auto available = setup.checker->state().available;
        QVERIFY(available);

        serve(sayAndClose({}));
        setup.clock.advance(1s);
        setup.published.clear();
        QVERIFY(setup.check() == failed(FailureReason::network));
        QVERIFY(setup.checker->state().available == available);
        QCOMPARE(setup.published.size(), std::size_t(3)); // checking, failed, the time
        QVERIFY(setup.published[1].lastChecked != setup.published[2].lastChecked);

        serve(reply(200, older));
        setup.check();
        QVERIFY(!setup.checker->state().available);
    }

    void trustsNobodyElse() {
        const TestAuthority stranger;
        for (const QSslConfiguration &identity :
             {stranger.identity(u"localhost"_s), authority_->identity(u"elsewhere.example"_s)}) {
            HttpsServer impostor(identity);
            impostor.answer(u"/version.json"_s, reply(200, newer));
            Setup setup(impostor.address(u"/version.json"_s));
            QVERIFY(setup.check() == failed(FailureReason::network));
            QVERIFY(impostor.requests.isEmpty());
        }
        const QUrl nobody = manifest();
        server_.reset();
        QVERIFY(Setup(nobody).check() == failed(FailureReason::network));
    }

    void limitsTheWholeExchange() {
        serve(drip("HTTP/1.1 200 OK\r\nContent-Length: 100000\r\n\r\n"));
        Setup setup(manifest());
        setup.checker->check();
        QTRY_VERIFY(!server_->requests.isEmpty());
        for (int second = 0; second < 8; ++second) {
            QTest::qWait(30); // bytes arrive meanwhile
            QVERIFY(setup.isChecking());
            setup.clock.advance(1s);
        }
        QVERIFY(setup.checker->state().state == failed(FailureReason::network));
        QTRY_COMPARE(server_->connections(), 0);
    }

    void letsTheLastOfOverlappingChecksDecide() {
        serve(say("HTTP/1.1 200 OK\r\nContent-Length: 1000\r\n\r\n"));
        Setup setup(manifest());
        setup.checker->check();
        QTRY_COMPARE(server_->requests.size(), 1);
        setup.clock.advance(1s);
        serve(reply(200, newer));
        setup.check();
        QVERIFY(std::holds_alternative<check::Available>(setup.checker->state().state));
        setup.clock.advance(7s);
        QVERIFY(setup.checker->state().state == failed(FailureReason::network));
        QVERIFY(setup.checker->state().available);
    }

    void checksAtOnceAndEveryTwelveHours() {
        serve(reply(200, older));
        Setup setup(manifest());
        setup.checker->startAutoChecking();
        for (int period = 1; period <= 3; ++period) {
            QVERIFY(setup.isChecking());
            QTRY_VERIFY(!setup.isChecking());
            setup.clock.advance(12h - 1s);
            QVERIFY(!setup.isChecking());
            if (period < 3)
                setup.clock.advance(1s);
        }
        setup.checker->startAutoChecking(); // begins the period anew
        QTRY_VERIFY(!setup.isChecking());
        QCOMPARE(server_->requests.size(), 4);
        QCOMPARE(setup.clock.pending(), std::vector<FakeClock::Delay>{12h});
    }

    void endsAtOnceWhenDestroyed() {
        serve(drip("HTTP/1.1 200 OK\r\nContent-Length: 100000\r\n\r\n"));
        Setup setup(manifest());
        setup.checker->startAutoChecking();
        QTRY_VERIFY(!server_->requests.isEmpty());
        setup.published.clear();
        setup.checker.reset();
        QVERIFY(setup.published.empty() && setup.clock.pending().empty());
        QTRY_COMPARE(server_->connections(), 0);
    }

    void asksTheSystemsProxy() {
        FakeService proxy;
        QNetworkProxyFactory::setUseSystemConfiguration(false); // whatever the rest of the program does
        const QByteArray exceptions = qgetenv("no_proxy");
        qunsetenv("no_proxy");
        qputenv("https_proxy", "http://127.0.0.1:" + QByteArray::number(proxy.address().port()));
        Setup setup(QUrl(u"https://updates.quorbit.example/version.json"_s));
        const CheckState outcome = setup.check();
        qunsetenv("https_proxy");
        qputenv("no_proxy", exceptions);
        QVERIFY(outcome == failed(FailureReason::network));
        QCOMPARE(proxy.lines().value(0), "CONNECT updates.quorbit.example:443");
    }
};

QTEST_GUILESS_MAIN(UpdateCheckTest)
#include "UpdateCheckTest.moc"
