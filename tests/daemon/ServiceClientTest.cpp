#include "daemon/ServiceClient.h"
#include "async/TransportError.h"
#include "support/Await.h"
#include "support/FakeClock.h"
#include "support/FakeService.h"
#include "support/Row.h"
#include "support/Samples.h"

using namespace quorbit;
using namespace quorbit::test;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr auto timeout = 60s;

/// A service with a good status, and its client.
struct World {
    World() {
        service.answerAll();
        client.setConnection({service.address(), u"t"_s});
    }
    QCoro::Task<std::string> ask() { return client.getBody(u"/api/status"_s, {}); }
    bool isAnswered() { return finish(ask()) == statusJson.toStdString(); }

    FakeService service;
    FakeClock clock;
    ServiceClient client{timeout, clock};
};

class ServiceClientTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void nothingIsSentWithoutUsableAddressTokenAndPath() {
        World world;
        const auto refuses = [&](const QString &address, const QString &token, const QString &way) {
            const Row row((address + u' ' + token + u' ' + way).toUtf8());
            ServiceClient client(timeout, world.clock);
            if (!address.isEmpty())
                client.setConnection({QUrl(address.arg(world.service.address().authority())), token});
            QVERIFY_EXCEPTION_THROWN(finish(client.getBody(way, {})), APIError);
        };
        const QString path = u"/api/devices/a"_s;
        for (const auto &address : {u""_s, u"ftp://%1"_s, u"//%1"_s, u"http:///ui?%1"_s})
            refuses(address, u"t"_s, path);
        for (const auto &token : {u"t\r\nX-Evil: 1"_s, u"t\0x"_s, u"t\x7f"_s})
            refuses(u"http://%1"_s, token, path);
        for (const char16_t character : u" \"<>\\^`{|}[]%\u00e9\n\r\u007f#")
            refuses(u"http://%1"_s, u"t"_s, path + character); // the last one is NUL
        for (const auto &way :
             {u"/api/devices/%4"_s, u"api/status"_s, u"//127.0.0.2/api/status"_s, u"/api/devices/.."_s,
              u"/api/devices/."_s, u"/api/devices/../history"_s, u"/api/devices/%2e%2E/history"_s,
              u"/api/devices/.%2e?x"_s, u"/api/devices/a%2F%2E./b"_s, u"/api/devices/a%5c..%5Cb"_s})
            refuses(u"http://%1"_s, u"t"_s, way);
        QVERIFY(world.isAnswered());
        QCOMPARE(world.service.connections, 1); // for that alone
    }

    void pathsReplaceTheAddressesOwnAndTokensGoOutAsTheyAre() {
        const struct {
            QString host, base, path, token;
            QHostAddress listens = QHostAddress::LocalHost;
        } rows[]{{u"localhost"_s, u"/ui"_s, u"/api/history"_s, u"s3cret"_s},
                 {u"[::1]"_s, u"/a/b/?c=d#e"_s, u"/api/history"_s, u""_s, QHostAddress::LocalHostIPv6},
                 {u"127.0.0.1"_s, u""_s, u"/api/devices/AZaz09-._~:@!$&'()*+,;=%2F%25"_s, u"p\u00e9: ,x"_s},
                 {u"127.0.0.1"_s, u""_s, u"/api/devices/%41%2e%2Ea...%252e/"_s, u"t"_s},
                 {u"127.0.0.1"_s, u""_s, u"/api/devices//x?b/../c"_s, u"t"_s}};
        for (const auto &[host, base, path, token, listens] : rows) {
            const Row row(host.toUtf8() + path.toUtf8());
            FakeService service(listens);
            const QByteArray line = "DELETE " + path.toUtf8();
            service.answer(line, {{}, 401, {"WWW-Authenticate: Basic realm=\"r\""}});
            const QString server = host + u':' + QString::number(service.address().port());
            FakeClock clock;
            ServiceClient client(timeout, clock);
            client.setConnection({QUrl(u"http://user:password@"_s + server + base), token});
            finish(client.deleteEmpty(path, {}));
            // Once: the name and password in the address are no answer to the service's refusal.
            QCOMPARE(service.seen.size(), std::size_t{1});
            QCOMPARE(service.seen[0].head, line + " HTTP/1.1\r\nHost: " + server.toUtf8() +
                                               "\r\nAuthorization: Bearer " + token.toUtf8() +
                                               "\r\nConnection: close");
        }
    }

    void questionsShareConnections() {
        World world;
        const auto askAtOnce = [&world](std::size_t questions) {
            std::vector<std::shared_ptr<Outcome<std::string>>> outcomes(questions);
            for (auto &outcome : outcomes)
                outcome = outcomeOf(world.ask());
            for (const auto &outcome : outcomes)
                QTRY_VERIFY(outcome->value);
        };
        for (int round = 0; round < 3; ++round) {
            askAtOnce(4);
            QCOMPARE(world.service.connections, 4);
        }
        askAtOnce(9);
        QTRY_COMPARE(world.service.openConnections(), 4); // What came on top of them is not kept.
    }

    void aConnectionInDoubtIsNotUsedAgain() {
        const QByteArray whole =
            "HTTP/1.1 200 OK\r\nContent-Length: " + QByteArray::number(statusJson.size()) + "\r\n\r\n" +
            statusJson;
        const struct {
            const char *name;
            QByteArray reply;
            void (*meanwhile)(FakeService &) = [](FakeService &) {};
        } rows[]{
            {"more than the reply", whole + "HTTP/1.1 200 OK\r\n\r\n[]"},
            {"a reply that nobody asked for", whole,
             [](FakeService &service) { service.say("HTTP/1.1 200 OK\r\nContent-Length: 2\r\n\r\n[]"); }},
            {"closed while idle", whole, [](FakeService &service) { service.hangUp(); }}};
        for (const auto &[name, reply, meanwhile] : rows) {
            const Row row(name);
            World world;
            world.service.answer("GET /api/status", {reply, 200, {}, Answer::raw});
            QVERIFY(world.isAnswered());
            meanwhile(world.service);
            QTRY_COMPARE(world.service.openConnections(), 0);
            QVERIFY(world.isAnswered());
            QCOMPARE(world.service.connections, 2);
            QCOMPARE(world.service.seen.size(), std::size_t{2});
        }
    }

    void whatMayBeSentAgain() {
        const struct {
            const char *name;
            Answer answer;
            bool isQuestion;
            std::size_t sent;
        } rows[]{{"a question without an answer", {{}, 200, {}, Answer::shut}, true, 2},
                 {"a question with half an answer", {statusJson, 200, {}, Answer::cutOff}, true, 1},
                 {"a command", {{}, 200, {}, Answer::shut}, false, 1}};
        for (const auto &[name, answer, isQuestion, sent] : rows) {
            const Row row(name);
            World world;
            QVERIFY(world.isAnswered());
            world.service.answer(isQuestion ? "GET /api/status" : "POST /api/pause", answer);
            if (isQuestion)
                QVERIFY_EXCEPTION_THROWN(finish(world.ask()), TransportError);
            else
                QVERIFY_EXCEPTION_THROWN(finish(world.client.postEmpty(u"/api/pause"_s, {})), TransportError);
            QCOMPARE(world.service.seen.size(), sent + 1);
            QCOMPARE(world.service.connections, sent == 1 && isQuestion ? 1 : 2);
        }
    }

    /// The token does not go out in the clear.
    void encryptedAddresses() {
        World world;
        QUrl address = world.service.address();
        address.setScheme(u"https"_s);
        world.client.setConnection({address, u"t"_s});
        const auto outcome = outcomeOf(world.ask());
        QTRY_COMPARE(world.service.connections, 1);
        world.service.say("HTTP/1.1 200 OK\r\nContent-Length: 2\r\n\r\n{}"); // which is no TLS
        QTRY_VERIFY(outcome->failure);
    }

    void aReplyMayTakeLongerThanTheTimeout() {
        World world;
        const auto readWhatWasSaid = [&world] { finish(world.client.postEmpty(u"/api/pause"_s, {})); };
        world.service.answer("GET /",
                             {"HTTP/1.1 200 OK\r\nContent-Length: 4\r\n\r\n{", 200, {}, Answer::raw});
        const auto outcome = outcomeOf(world.client.getBody(u"/"_s, {}));
        for (const char *piece : {" ", " ", "}"}) {
            readWhatWasSaid();
            world.clock.advance(timeout * 2 / 3);
            QVERIFY(!outcome->ended());
            world.service.say(piece);
        }
        QTRY_COMPARE(outcome->value, "{  }");
        world.service.answer("GET /", {{}, 200, {}, Answer::hang});
        const auto unanswered = outcomeOf(world.client.getBody(u"/"_s, {}));
        readWhatWasSaid();
        world.clock.advance(timeout - 1ms);
        QVERIFY(!unanswered->ended());
        world.clock.advance(1ms);
        QTRY_VERIFY(unanswered->failure);
    }
};

} // namespace

QTEST_GUILESS_MAIN(ServiceClientTest)
#include "ServiceClientTest.moc"
