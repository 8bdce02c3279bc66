#include "support/FakeClock.h"
#include "support/FakePlatform.h"
#include "update/HttpsServer.h"
#include "update/PackageDownload.h"
#include "update/TestAuthority.h"

#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>

#include <sys/prctl.h>

using namespace quorbit;
using namespace quorbit::test;
using namespace Qt::StringLiterals;

namespace {

constexpr qint64 megabyte = 1024LL * 1024;
constexpr qint64 packageSize = 300 * megabyte;

/// A line of /proc/self/status such as "VmRSS", in bytes.
qint64 memory(const QByteArray &name) {
    QFile status(u"/proc/self/status"_s);
    if (!status.open(QFile::ReadOnly))
        return -1;
    for (const QByteArray &line : status.readAll().split('\n')) {
        if (line.startsWith(name + ':'))
            return line.simplified().split(' ').value(1).toLongLong() * 1024;
    }
    return -1;
}

/// Serves packages until this program is killed, and dies with the one that started it, so that only the
/// client's memory is counted there.
int servePackages() {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    const TestAuthority authority;
    HttpsServer server(authority.identity(u"localhost"_s));
    server.answer(u"/small"_s, stream(megabyte));
    server.answer(u"/large"_s, stream(packageSize));
    QFile output;
    if (!output.open(stdout, QFile::WriteOnly) ||
        output.write(server.address({}).toEncoded() + '\n' + authority.certificate().toPem() + '\n') < 0)
        return 1;
    output.close();
    return QCoreApplication::exec();
}

} // namespace

class DownloadMemoryTest : public QObject {
    Q_OBJECT

private:
    QProcess server_;
    QString address_;
    SecureNetwork network_;
    FakeClock clock_;
    QTemporaryDir folder_;

    QString download(const QString &path) {
        auto downloading =
            downloadPackage(network_, clock_, QUrl(address_ + path), folder_.path(), std::stop_token());
        return QCoro::waitFor(downloading);
    }

private Q_SLOTS:
    void initTestCase() {
        server_.start(QCoreApplication::applicationFilePath(), {u"--serve"_s});
        QByteArray greeting;
        while (!greeting.contains("-END CERTIFICATE-")) {
            QVERIFY(server_.waitForReadyRead());
            greeting += server_.readAllStandardOutput();
        }
        const qsizetype lineEnd = greeting.indexOf('\n');
        address_ = QString::fromUtf8(greeting.first(lineEnd));
        trust(QSslCertificate(greeting.sliced(lineEnd)));
    }
    void cleanupTestCase() {
        server_.kill();
        server_.waitForFinished();
    }

    void doesNotGrowWithThePackage() {
#ifdef __SANITIZE_ADDRESS__
        QSKIP("The sanitizer keeps freed memory.");
#endif
        download(u"/small"_s); // whatever is set up only once
        const qint64 before = memory("VmRSS");
        QElapsedTimer timer;
        timer.start();
        const QString file = download(u"/large"_s);
        const qint64 growth = memory("VmHWM") - before;
        qInfo("%lld MB in %lld ms; memory grew by %lld KB", packageSize / megabyte, timer.elapsed(),
              growth / 1024);
        QCOMPARE(QFileInfo(file).size(), packageSize);
        QVERIFY(before > 0);
        QVERIFY(growth < 20 * megabyte);
    }
};

int main(int argc, char **argv) {
    QCoreApplication application(argc, argv);
    if (application.arguments().contains(u"--serve"_s))
        return servePackages();
    DownloadMemoryTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "DownloadMemoryTest.moc"
