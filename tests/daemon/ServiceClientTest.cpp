#include "daemon/ServiceClient.h"
#include "daemon/Records.h"
#include "support/Await.h"
#include "support/FakeService.h"
#include "support/Samples.h"

#include <QElapsedTimer>
#include <QNetworkProxy>
#include <QTest>

using namespace quorbit;
using namespace quorbit::test;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr auto silence = 300ms;

class ServiceClientTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void nothingIsSentWithoutUsableAddressTokenAndPath_data() {
        QTest::addColumn<QString>("address"); // %1: the service's own
        QTest::addColumn<QString>("token");
        QTest::addColumn<QString>("path");
        const QString service = u"http://%1"_s;
        const QString path = u"/api/devices/a"_s;
        const auto row = [](const char *name, const QString &address, const QString &token,
                            const QString &way) { QTest::newRow(name) << address << token << way; };
        row("no connection", {}, {}, path);
        row("other scheme", u"ftp://%1"_s, u"t"_s, path);
        row("no scheme", u"//%1"_s, u"t"_s, path);
        row("no host", u"http:///ui"_s, u"t"_s, path);
        row("file", u"file:///etc/passwd"_s, u"t"_s, path);
        row("line break in token", service, u"t\r\nX-Evil: 1"_s, path);
        row("line feed in token", service, u"t\nX"_s, path);
        row("NUL in token", service, u"t\0x"_s, path);
        row("DEL in token", service, u"t\x7f"_s, path);
        for (const char *id :
             {" ", "a b", "a\"", "<",  ">",   "\\",       "^",  "`",         "{",    "|",  "}",
              "[", "]",   "%",   "%4", "%zz", "\xc3\xa9", "\n", "a\r\nX: 1", "\x7f", "a#b"})
            row(QByteArray(id).toHex('-').constData(), service, u"t"_s,
                "/api/devices/"_L1 + QString::fromUtf8(id));
        row("NUL", service, u"t"_s, u"/api/devices/\0"_s);
        row("relative", service, u"t"_s, u"api/status"_s);
    }
    void nothingIsSentWithoutUsableAddressTokenAndPath() {
        QFETCH(QString, address);
        QFETCH(QString, token);
        QFETCH(QString, path);
        FakeService service;
        ServiceClient client(silence);
        if (!address.isEmpty())
            client.setConnection({QUrl(address.replace(u"%1"_s, service.address().authority())), token});
        QVERIFY_EXCEPTION_THROWN(finish(client.get<Status>(path, {})), APIError);
        QVERIFY_EXCEPTION_THROWN(finish(client.put<UpdateResult>(path, DaemonSettings(), {})), APIError);
        QVERIFY_EXCEPTION_THROWN(finish(client.postEmpty(path, {})), APIError);
        QVERIFY_EXCEPTION_THROWN(finish(client.deleteEmpty(path, {})), APIError);
        QTest::qWait(20);
        QCOMPARE(service.connections, 0);
    }

    void pathsReplaceTheAddressesOwn_data() {
        QTest::addColumn<QString>("base"); // appended to the service's address
        QTest::addColumn<QString>("path");
        QTest::addColumn<QByteArray>("target");
        QTest::newRow("path") << u"/ui"_s << u"/api/history"_s << QByteArray("/api/history");
        QTest::newRow("path, query and fragment")
            << u"/a/b/?c=d#e"_s << u"/api/history"_s << QByteArray("/api/history");
        QTest::newRow("every character") << u""_s << u"/api/devices/AZaz09-._~:@!$&'()*+,;=%2F%25"_s
                                         << QByteArray("/api/devices/AZaz09-._~:@!$&'()*+,;=%2F%25");
        QTest::newRow("empty segment") << u""_s << u"/api/devices//x"_s << QByteArray("/api/devices//x");
        QTest::newRow("question mark") << u""_s << u"/api/devices/a?b"_s << QByteArray("/api/devices/a?b");
    }
    void pathsReplaceTheAddressesOwn() {
        QFETCH(QString, base);
        QFETCH(QString, path);
        QFETCH(QByteArray, target);
        FakeService service;
        ServiceClient client(silence);
        client.setConnection({QUrl(service.address().toString() + base), u"t"_s});
        finish(client.deleteEmpty(path, {}));
        QCOMPARE(service.lines(), QByteArrayList{"DELETE " + target});
    }

    void tokenGoesOutAsItIs_data() {
        QTest::addColumn<QString>("token");
        QTest::newRow("usual") << u"s3cret"_s;
        QTest::newRow("empty") << u""_s;
        QTest::newRow("not ASCII") << u"p\u00e9: ,x"_s;
    }
    void tokenGoesOutAsItIs() {
        QFETCH(QString, token);
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

    void statusesPlayNoPart_data() {
        QTest::addColumn<int>("status");
        for (const int status : {200, 201, 301, 302, 307, 400, 401, 403, 404, 405, 407,
                                 409, 410, 418, 429, 500, 501, 502, 503, 504, 599})
            QTest::addRow("%d", status) << status;
    }
    void statusesPlayNoPart() {
        QFETCH(int, status);
        FakeService service;
        ServiceClient client(silence);
        client.setConnection({service.address(), u"t"_s});
        Answer answer{R"({"ok":false})", status, {"WWW-Authenticate: Basic realm=\"r\""}};
        service.answer("PUT /api/settings", answer);
        service.answer("POST /api/pause", {{}, status});
        QCOMPARE(finish(client.put<UpdateResult>(u"/api/settings"_s, DaemonSettings(), {})).ok, false);
        finish(client.postEmpty(u"/api/pause"_s, {}));
        QCOMPARE(service.seen.size(), std::size_t{2});
    }

    void brokenRepliesFail_data() {
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<int>("manner");
        QTest::addColumn<QByteArrayList>("headers");
        const auto row = [](const char *name, const QByteArray &body, Answer::Manner manner = Answer::reply,
                            const QByteArrayList &headers = {}) {
            QTest::newRow(name) << body << static_cast<int>(manner) << headers;
        };
        row("empty", {});
        row("null", "null");
        row("page", "<html></html>");
        row("deep", QByteArray(100'000, '['));
        row("bad UTF-8", QByteArray(statusJson).replace("Desk", "\xff"));
        row("50 MB", statusJson + QByteArray(50'000'000, ' '));
        row("endless", {}, Answer::endless);
        row("cut off", statusJson, Answer::cutOff);
        row("cut off in the head", {}, Answer::shut);
        row("hangs", {}, Answer::hang);
        row("bad compression", statusJson, Answer::reply, {"Content-Encoding: gzip"});
    }
    void brokenRepliesFail() {
        QFETCH(QByteArray, body);
        QFETCH(int, manner);
        QFETCH(QByteArrayList, headers);
        FakeService service;
        ServiceClient client(silence);
        client.setConnection({service.address(), u"t"_s});
        service.answer("GET /api/status", {body, 200, headers, static_cast<Answer::Manner>(manner)});
        try {
            finish(client.get<Status>(u"/api/status"_s, {}));
            QFAIL("the reply was taken");
        } catch (const TransportError &) {
        } catch (const wire::DecodeError &) {}
        // The next request is none the worse for it.
        service.answer("GET /api/status", {statusJson});
        QCOMPARE(finish(client.get<Status>(u"/api/status"_s, {})), wire::decode<Status>(statusJson));
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
