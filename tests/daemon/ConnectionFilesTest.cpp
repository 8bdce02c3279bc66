#include "daemon/ConnectionFiles.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>

using namespace quorbit;
using namespace Qt::StringLiterals;

namespace {

const QString folder = u"Library/Application Support/Quorbit"_s;

class ConnectionFilesTest : public QObject {
    Q_OBJECT

    QTemporaryDir home_;

    QString path(const QString &name) const { return home_.filePath(folder + u'/' + name); }
    void write(const QString &name, const QByteArray &text) const {
        QFile file(path(name));
        QVERIFY(file.open(QFile::WriteOnly));
        QCOMPARE(file.write(text), text.size());
    }

private Q_SLOTS:
    void init() {
        QDir(home_.path()).removeRecursively();
        QVERIFY(QDir().mkpath(home_.filePath(folder)));
    }

    void contents_data() {
        QTest::addColumn<QByteArray>("address");
        QTest::addColumn<QByteArray>("token");
        QTest::addColumn<QString>("expectedAddress"); // null: no connection
        QTest::addColumn<QString>("expectedToken");
        const QByteArray good = "http://127.0.0.1:24801/ui";
        const QString url = QString::fromLatin1(good);
        const auto row = [](const char *name, const QByteArray &address, const QByteArray &token,
                            const QString &expectedAddress, const QString &expectedToken = {}) {
            QTest::newRow(name) << address << token << expectedAddress << expectedToken;
        };
        row("plain", good, "t", url, u"t"_s);
        row("white space", " \t\r\n" + good + "\xc2\xa0\xe2\x80\xa9\r\n", "\n t u \xe2\x80\x83\n", url,
            u"t u"_s);
        row("query", good + "?token=x?y\n", "t", url, u"t"_s);
        row("leading question marks", "??" + good + "?a", "t", url, u"t"_s);
        row("empty token", good, " \n", url, u""_s);
        row("no scheme is looked at later", "localhost/ui", "t", u"localhost/ui"_s, u"t"_s);
        row("empty address", "", "t", {});
        row("blank address", " \n", "t", {});
        row("not an address", "http://a b/", "t", {});
        row("bad port", "http://127.0.0.1:99999999/", "t", {});
        row("address not UTF-8", good + "\xff", "t", {});
        row("token not UTF-8", good, "\xc3(", {});
        row("token cut off", good, "t\xe4\xb8", {});
        row("large", good, QByteArray(1'000'000, 't'), {});
    }
    void contents() {
        QFETCH(QByteArray, address);
        QFETCH(QByteArray, token);
        QFETCH(QString, expectedAddress);
        QFETCH(QString, expectedToken);
        write(u"ui-url"_s, address);
        write(u"ui-token"_s, token);
        const auto connection = readConnectionFiles(home_.path());
        QCOMPARE(connection.has_value(), !expectedAddress.isNull());
        if (connection) {
            QCOMPARE(connection->address, QUrl(expectedAddress));
            QCOMPARE(connection->token, expectedToken);
        }
    }

    void bothFilesAreNeeded() {
        QVERIFY(!readConnectionFiles(home_.path()));
        write(u"ui-url"_s, "http://127.0.0.1:1");
        QVERIFY(!readConnectionFiles(home_.path()));
        write(u"ui-token"_s, "t");
        QVERIFY(readConnectionFiles(home_.path()));
        QVERIFY(QFile::remove(path(u"ui-url"_s)));
        QVERIFY(!readConnectionFiles(home_.path()));
    }

    /// A read that waits would run into the time-out of the test.
    void whatIsNotAFileIsNotWaitedFor() {
        write(u"ui-url"_s, "http://127.0.0.1:1");
        const QString token = path(u"ui-token"_s);
        QVERIFY(QDir().mkdir(token));
        QVERIFY(!readConnectionFiles(home_.path()));
        QVERIFY(QDir().rmdir(token));
        QCOMPARE(::mkfifo(QFile::encodeName(token).constData(), 0600), 0);
        QVERIFY(!readConnectionFiles(home_.path()));
        QVERIFY(QFile::remove(token));
        QVERIFY(QFile::link(u"/dev/zero"_s, token));
        QVERIFY(!readConnectionFiles(home_.path()));
    }
};

} // namespace

QTEST_GUILESS_MAIN(ConnectionFilesTest)
#include "ConnectionFilesTest.moc"
