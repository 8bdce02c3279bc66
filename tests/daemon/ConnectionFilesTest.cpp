#include "daemon/ConnectionFiles.h"
#include "support/Row.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

using namespace quorbit;
using namespace quorbit::test;
using namespace Qt::StringLiterals;

namespace {

const QString folder = u"Library/Application Support/Quorbit/"_s;

class ConnectionFilesTest : public QObject {
    Q_OBJECT

    QTemporaryDir home_;

    void write(const QString &name, const QByteArray &text) const {
        QFile file(home_.filePath(folder + name));
        QVERIFY(file.open(QFile::WriteOnly) && file.write(text) == text.size());
    }

private Q_SLOTS:
    void initTestCase() { QVERIFY(QDir().mkpath(home_.filePath(folder))); }

    void contents() {
        const QByteArray good = "http://127.0.0.1:24801/ui";
        const struct {
            const char *name;
            QByteArray address, token;
            std::optional<QString> expectedToken = {}; ///< none: no connection
        } rows[]{
            {"white space", " \t\r\n" + good + "\xc2\xa0\xe2\x80\xa9\r\n", "\n t u \xe2\x80\x83\n", u"t u"_s},
            {"question marks", "??" + good + "?token=x?y\n", "t", u"t"_s},
            {"empty token", good, " \n", u""_s},
            {"backslash", "http://127.0.0.1\\@evil.example/", "t"},
            {"blank address", " \n", "t"},
            {"address not UTF-8", good + "\xff", "t"},
            {"token cut off", good, "t\xc3"},
            {"large", good, QByteArray(1'000'000, 't')}};
        for (const auto &[name, address, token, expectedToken] : rows) {
            const Row row(name);
            write(u"ui-url"_s, address);
            write(u"ui-token"_s, token);
            const auto connection = readConnectionFiles(home_.path());
            QCOMPARE(connection.has_value(), expectedToken.has_value());
            if (connection) {
                QCOMPARE(connection->address, QUrl(QString::fromLatin1(good)));
                QCOMPARE(connection->token, *expectedToken);
            }
        }
    }
};

} // namespace

QTEST_GUILESS_MAIN(ConnectionFilesTest)
#include "ConnectionFilesTest.moc"
