#include "daemon/ServiceClient.h"
#include "daemon/Records.h"
#include "support/Await.h"
#include "support/FakeService.h"
#include "support/Row.h"
#include "support/Samples.h"

#include <QElapsedTimer>
#include <QNetworkProxy>

using namespace quorbit;
using namespace quorbit::test;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr auto silence = 300ms;

class ServiceClientTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void nothingIsSentWithoutUsableAddressTokenAndPath() {
        FakeService service;
        const QString path = u"/api/devices/a"_s;
        const auto refuses = [&](const QString &address, const QString &token, const QString &way) {
            const Row row((address + u' ' + token + u' ' + way).toUtf8());
            ServiceClient client(silence);
            if (!address.isEmpty())
                client.setConnection({QUrl(address.arg(service.address().authority())), token});
            QVERIFY_EXCEPTION_THROWN(finish(client.get<Status>(way, {})), APIError);
            QVERIFY_EXCEPTION_THROWN(finish(client.put<UpdateResult>(way, DaemonSettings(), {})), APIError);
            QVERIFY_EXCEPTION_THROWN(finish(client.postEmpty(way, {})), APIError);
            QVERIFY_EXCEPTION_THROWN(finish(client.deleteEmpty(way, {})), APIError);
        };
        for (const auto &address :
             {u""_s, u"ftp://%1"_s, u"//%1"_s, u"http:///ui?%1"_s, u"file:///etc/passwd?%1"_s})
            refuses(address, u"t"_s, path);
        for (const auto &token : {u"t\r\nX-Evil: 1"_s, u"t\nX"_s, u"t\0x"_s, u"t\x7f"_s})
            refuses(u"http://%1"_s, token, path);
        for (const char16_t character : u" \"<>\\^`{|}[]%\u00e9\n\r\u007f#")
            refuses(u"http://%1"_s, u"t"_s, path + character); // the last one is NUL
        for (const auto &way :
             {u"/api/devices/%4"_s, u"/api/devices/%zz"_s, u"api/status"_s, u"//127.0.0.2/api/status"_s})
            refuses(u"http://%1"_s, u"t"_s, way);
        QTest::qWait(20);
        QCOMPARE(service.connections, 0);
    }

    void pathsReplaceTheAddressesOwn() {
        const std::pair<QString, QString> rows[]{// the base is appended to the service's address
                                                 {u"/ui"_s, u"/api/history"_s},
                                                 {u"/a/b/?c=d#e"_s, u"/api/history"_s},
                                                 {u""_s, u"/api/devices/AZaz09-._~:@!$&'()*+,;=%2F%25"_s},
                                                 {u""_s, u"/api/devices//x"_s},
                                                 {u""_s, u"/api/devices/a?b"_s}};
        for (const auto &[base, path] : rows) {
            FakeService service;
            ServiceClient client(silence);
            client.setConnection({QUrl(service.address().toString() + base), u"t"_s});
            finish(client.deleteEmpty(path, {}));
            QCOMPARE(service.lines(), QByteArrayList{"DELETE " + path.toUtf8()});
        }
    }

    void tokenGoesOutAsItIs() {
        for (const QString &token : {u"s3cret"_s, u""_s, u"p\u00e9: ,x"_s}) {
            FakeService service;
            ServiceClient client(silence);
            service.answer("POST /api/pause", {{}, 401, {"WWW-Authenticate: Basic realm=\"r\""}});
            QUrl address = service.address();
            address.setUserInfo(u"user:password"_s);
            client.setConnection({address, token});
            finish(client.postEmpty(u"/api/pause"_s, {}));
            // Once: the name and password in the address are no answer to the service's refusal.
            QCOMPARE(service.seen.size(), std::size_t{1});
            QCOMPARE(service.seen.at(0).header("authorization"), QByteArrayList{"Bearer " + token.toUtf8()});
        }
    }

    void statusesPlayNoPart() {
        for (const int status : {200, 201, 301, 302, 307, 400, 401, 403, 404, 405, 407,
                                 409, 410, 418, 429, 500, 501, 502, 503, 504, 599}) {
            const Row row(QByteArray::number(status));
            FakeService service;
            ServiceClient client(silence);
            client.setConnection({service.address(), u"t"_s});
            service.answer("PUT /api/settings",
                           {R"({"ok":false})", status, {"WWW-Authenticate: Basic realm=\"r\""}});
            service.answer("POST /api/pause", {{}, status});
            QCOMPARE(finish(client.put<UpdateResult>(u"/api/settings"_s, DaemonSettings(), {})).ok, false);
            finish(client.postEmpty(u"/api/pause"_s, {}));
            QCOMPARE(service.seen.size(), std::size_t{2});
        }
    }

    void brokenRepliesFail() {
        const std::pair<const char *, Answer> rows[]{
            {"empty", {}},
            {"null", {"null"}},
            {"deep", {QByteArray(100'000, '[')}},
            {"bad UTF-8", {QByteArray(statusJson).replace("Desk", "\xff")}},
            {"50 MB", {statusJson + QByteArray(50'000'000, ' ')}},
            {"endless", {{}, 200, {}, Answer::endless}},
            {"cut off", {statusJson, 200, {}, Answer::cutOff}},
            {"cut off in the head", {{}, 200, {}, Answer::shut}},
            {"hangs", {{}, 200, {}, Answer::hang}}};
        for (const auto &[name, answer] : rows) {
            const Row row(name);
            FakeService service;
            ServiceClient client(silence);
            client.setConnection({service.address(), u"t"_s});
            service.answer("GET /api/status", answer);
            try {
                finish(client.get<Status>(u"/api/status"_s, {}));
                QFAIL("the reply was taken");
            } catch (const TransportError &) {
            } catch (const wire::DecodeError &) {}
            // The next request is none the worse for it.
            service.answer("GET /api/status", {statusJson});
            QCOMPARE(finish(client.get<Status>(u"/api/status"_s, {})), wire::decode<Status>(statusJson));
        }
    }

    void refusedConnectionFails() {
        FakeService service;
        ServiceClient client(silence);
        client.setConnection({service.address(), u"t"_s});
        service.close();
        QVERIFY_EXCEPTION_THROWN(finish(client.get<Status>(u"/api/status"_s, {})), TransportError);
        QVERIFY_EXCEPTION_THROWN(finish(client.postEmpty(u"/api/pause"_s, {})), TransportError);
    }

    void redirectsAreNotFollowed() {
        FakeService elsewhere;
        elsewhere.answerAll();
        FakeService service;
        const QByteArray target = elsewhere.address().toEncoded();
        service.answer("GET /api/status", {{}, 302, {"Location: " + target + "/api/status"}});
        service.answer("POST /api/pause", {{}, 307, {"Location: " + target + "/api/pause"}});
        ServiceClient client(silence);
        client.setConnection({service.address(), u"t"_s});
        QVERIFY_EXCEPTION_THROWN(finish(client.get<Status>(u"/api/status"_s, {})), wire::DecodeError);
        finish(client.postEmpty(u"/api/pause"_s, {}));
        QTest::qWait(20);
        QCOMPARE(elsewhere.connections, 0);
        QCOMPARE(service.seen.size(), std::size_t{2});
    }

    void cookiesAndRepliesAreNotKept() {
        FakeService service;
        service.answer(
            "GET /api/status",
            {statusJson, 200, {"Set-Cookie: a=b; Path=/", "Cache-Control: max-age=3600", "ETag: \"1\""}});
        ServiceClient client(silence);
        client.setConnection({service.address(), u"t"_s});
        finish(client.get<Status>(u"/api/status"_s, {}));
        finish(client.get<Status>(u"/api/status"_s, {}));
        QCOMPARE(service.seen.size(), std::size_t{2});
        QVERIFY(service.seen[1].header("cookie").isEmpty());
        QVERIFY(service.seen[1].header("if-none-match").isEmpty());
    }

    /// Qt itself asks no proxy for the loopback address, so this is an address that leads nowhere.
    void proxiesAreNotAsked() {
        FakeService proxy;
        qunsetenv("no_proxy");
        qputenv("http_proxy", proxy.address().toEncoded());
        QNetworkProxyFactory::setUseSystemConfiguration(true);
        ServiceClient client(silence);
        client.setConnection({QUrl(u"http://192.0.2.1:9"_s), u"t"_s});
        QVERIFY_EXCEPTION_THROWN(finish(client.get<Status>(u"/api/status"_s, {})), TransportError);
        QNetworkProxyFactory::setUseSystemConfiguration(false);
        qunsetenv("http_proxy");
        QCOMPARE(proxy.connections, 0);
    }

    void stopEndsAHangingRequestAtOnce() {
        FakeService service;
        service.answer("POST /api/pause", {{}, 200, {}, Answer::hang});
        ServiceClient client(1h);
        client.setConnection({service.address(), u"t"_s});
        std::stop_source owner;
        const auto outcome = outcomeOf(client.postEmpty(u"/api/pause"_s, owner.get_token()));
        QTRY_COMPARE(service.seen.size(), std::size_t{1});
        QVERIFY(!outcome->ended());
        owner.request_stop();
        QVERIFY(outcome->stopped);
    }
};

} // namespace

QTEST_GUILESS_MAIN(ServiceClientTest)
#include "ServiceClientTest.moc"
