#include "support/FakeClock.h"
#include "support/FakePlatform.h"
#include "support/FakeService.h"
#include "support/Row.h"
#include "update/HttpsServer.h"
#include "update/TestAuthority.h"
#include "update/UpdateChecker.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>

#include <sys/resource.h>
#include <sys/stat.h>

using namespace quorbit;
using namespace quorbit::test;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

const QString packagePath = u"/pkg/app-2.0.dmg"_s;
const QString fileName = u"app-2.0.dmg"_s;
const QByteArray okay = "HTTP/1.1 200 OK\r\n";

/// A few megabytes in which no part looks like another.
QByteArray packageBody() {
    QByteArray body;
    while (body.size() < 3LL * 1024 * 1024)
        body += QByteArray::number(body.size()) + '\n';
    return body;
}

QByteArray contents(const QString &path) {
    QFile file(path);
    return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray("unreadable");
}

void write(const QString &path, const QByteArray &text) {
    QFile file(path);
    QVERIFY(file.open(QFile::WriteOnly) && file.write(text) == text.size());
}

/// What this program occupies by a line of /proc/self/status, in kilobytes.
qint64 memory(const QByteArray &name) {
    const QByteArray status = contents(u"/proc/self/status"_s);
    return status.mid(status.indexOf(name)).simplified().split(' ').value(1).toLongLong();
}

/// Everything in a folder, hidden or not.
QStringList entries(const QString &folder) {
    return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
}

} // namespace

class PackageDownloadTest : public QObject {
    Q_OBJECT

private:
    QSslConfiguration identity_;
    std::unique_ptr<HttpsServer> server_;
    FakeService plainServer_;
    std::unique_ptr<QTemporaryDir> home_;
    FakePlatform platform_;
    FakeClock clock_;
    std::unique_ptr<UpdateChecker> checker_;
    const QByteArray package_ = packageBody();

    QString downloads() const { return home_->filePath(u"Downloads"_s); }
    QString file() const { return downloads() + u'/' + fileName; }
    DownloadState state() const { return checker_->state().downloadState; }

    /// Makes an update known whose package has this address.
    void offer(const QUrl &address) {
        server_->answer(u"/version.json"_s, reply(200, "{\"version\": \"2.0\", \"download\": {\"macos\": \"" +
                                                           address.toEncoded() + "\"}}"));
        checker_->check();
        QTRY_VERIFY(std::holds_alternative<check::Available>(checker_->state().state));
        server_->requests.clear();
    }
    void offer(const Reaction &answer) {
        server_->answer(packagePath, answer);
        offer(server_->address(packagePath));
    }
    DownloadState download() {
        checker_->downloadUpdate();
        [this] { QTRY_VERIFY_WITH_TIMEOUT(state() != DownloadState::downloading, 60'000); }();
        return state();
    }
    void keepEarlierDownload() {
        QVERIFY(QDir().mkpath(downloads()));
        write(file(), "the one before");
    }
    /// The folder is as keepEarlierDownload() left it.
    bool isUntouched() const {
        return entries(downloads()) == QStringList{fileName} && contents(file()) == "the one before";
    }

private Q_SLOTS:
    void initTestCase() {
        const TestAuthority authority;
        trust(authority.certificate());
        identity_ = authority.identity(u"localhost"_s);
        plainServer_.answer("GET " + packagePath.toUtf8(), {"evil"});
    }
    void init() {
        server_ = std::make_unique<HttpsServer>(identity_);
        home_ = std::make_unique<QTemporaryDir>();
        platform_ = FakePlatform();
        platform_.downloads = downloads();
        checker_ = std::make_unique<UpdateChecker>(platform_, clock_, server_->address(u"/version.json"_s),
                                                   QStringList());
    }
    void cleanup() { checker_.reset(); }

    void keepsAndRevealsThePackage() {
        server_->answer(u"/other/name.bin"_s, reply(200, package_));
        const std::pair<const char *, Reaction> rows[]{
            {"with length", reply(200, package_, "Content-Disposition: attachment; filename=other.dmg\r\n")},
            {"in chunks",
             sayAndClose(okay + "Transfer-Encoding: chunked\r\n\r\n" +
                         QByteArray::number(package_.size(), 16) + "\r\n" + package_ + "\r\n0\r\n\r\n")},
            {"from elsewhere", reply(302, "moved", "Location: /other/name.bin\r\n")}};
        const mode_t mask = umask(022);
        for (const auto &[name, answer] : rows) {
            const Row row(name);
            platform_.revealed.clear();
            offer(answer);
            checker_->downloadUpdate();
            QVERIFY(platform_.revealed.isEmpty());
            QTRY_COMPARE(state(), DownloadState::done);
            QCOMPARE(entries(downloads()), QStringList{fileName});
            QVERIFY(contents(file()) == package_);
            QCOMPARE(QFile::permissions(file()) & 0x0fff, QFile::Permissions(0x0644));
            QCOMPARE(platform_.revealed, QStringList{file()});
            QVERIFY(clock_.pending().empty() && QFile::remove(file()));
        }
        umask(mask);
    }

    void replacesWhatHasTheName() {
        const QString outside = home_->filePath(u"outside"_s);
        QVERIFY(QDir().mkpath(outside) && QDir().mkpath(file() + u"/inside"_s));
        write(outside + u"/file"_s, "precious");
        QVERIFY(QFile::link(outside, file() + u"/inside/link"_s));
        for (const char *obstacle : {"a folder", "a link"}) {
            const Row row(obstacle);
            offer(reply(200, package_));
            QCOMPARE(download(), DownloadState::done);
            QCOMPARE(entries(downloads()), QStringList{fileName});
            QVERIFY(!QFileInfo(file()).isSymLink() && contents(file()) == package_);
            QCOMPARE(contents(outside + u"/file"_s), "precious");
            QVERIFY(QFile::remove(file()) && QFile::link(outside, file()));
        }
    }

    void leavesNothingOfAFailure() {
        const QByteArray half = package_.first(package_.size() / 2);
        const QByteArray plain = plainServer_.address().toEncoded() + packagePath.toUtf8();
        const std::pair<const char *, Reaction> rows[]{
            {"endless error page", drip("HTTP/1.1 500 Error\r\nContent-Length: 100000\r\n\r\n")},
            {"cut off", sayAndClose(head(200, package_.size(), {}) + half)},
            {"of unknown length", sayAndClose(okay + "\r\n" + package_)},
            {"redirect to HTTP", reply(302, {}, "Location: " + plain + "\r\n")}};
        for (const auto &[name, answer] : rows) {
            const Row row(name);
            keepEarlierDownload();
            offer(answer);
            QCOMPARE(download(), DownloadState::failed);
            QVERIFY(isUntouched() && platform_.revealed.isEmpty());
        }
        QCOMPARE(plainServer_.connections, 0);
        server_->answer(packagePath, reply(200, package_));
        QCOMPARE(download(), DownloadState::done);
        QVERIFY(contents(file()) == package_);
    }

    void refusesAddresses() {
        keepEarlierDownload();
        for (const QUrl &address : {plainServer_.address().resolved(QUrl(packagePath)),
                                    QUrl(u"file:///etc/hostname"_s), QUrl(u"https://localhost/"_s)}) {
            const Row row(address.toEncoded());
            offer(address);
            QCOMPARE(download(), DownloadState::failed);
            QVERIFY(isUntouched());
        }
        QCOMPARE(plainServer_.connections, 0);
    }

    void failsWithoutAUsableFolder() {
        const QString blocked = home_->filePath(u"blocked"_s);
        write(blocked, "precious");
        for (const std::optional<QString> &folder : {std::optional<QString>(), std::optional(blocked)}) {
            platform_.downloads = folder;
            offer(reply(200, package_));
            QCOMPARE(download(), DownloadState::failed);
            QCOMPARE(contents(blocked), "precious");
        }
    }

    void leavesNothingWhenTheDiskIsFull() {
        keepEarlierDownload();
        offer(reply(200, package_));
        // No file beyond a size, as on a full disk.
        const auto former = std::signal(SIGXFSZ, SIG_IGN);
        rlimit before{};
        getrlimit(RLIMIT_FSIZE, &before);
        const rlimit limit{1024UL * 1024, before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
        const DownloadState outcome = download();
        setrlimit(RLIMIT_FSIZE, &before);
        std::signal(SIGXFSZ, former);
        QCOMPARE(outcome, DownloadState::failed);
        QVERIFY(isUntouched());
        QCOMPARE(download(), DownloadState::done);
    }

    void givesUpWhenTheServerStalls() {
        keepEarlierDownload();
        offer(drip(okay + "Content-Length: 100000\r\n\r\n"));
        checker_->downloadUpdate();
        QTRY_VERIFY(!server_->requests.isEmpty());
        for (int minute = 0; minute < 3; ++minute) {
            QTest::qWait(30); // something arrives meanwhile
            clock_.advance(59s);
            QCOMPARE(state(), DownloadState::downloading);
        }
        clock_.advance(60s);
        QCOMPARE(state(), DownloadState::failed);
        QVERIFY(isUntouched());
        QTRY_COMPARE(server_->connections(), 0);
    }

    void downloadsOnceAtATime() {
        keepEarlierDownload();
        offer(say(okay + "Content-Length: 12\r\n\r\nhalf a"));
        checker_->downloadUpdate();
        checker_->downloadUpdate();
        QTRY_COMPARE(server_->requests.size(), 1);
        QTest::qWait(50); // the half arrives meanwhile
        QVERIFY(isUntouched());
        QCOMPARE(server_->requests.size(), 1);
        clock_.advance(60s);

        for (const QByteArray body : {"first", ""}) {
            server_->answer(packagePath, reply(200, body));
            QCOMPARE(download(), DownloadState::done);
            QCOMPARE(contents(file()), body);
        }
    }

    void memoryDoesNotGrowWithThePackage() {
#ifdef __SANITIZE_ADDRESS__
        QSKIP("The sanitizer keeps freed memory.");
#endif
        constexpr qint64 size = 300LL * 1024 * 1024;
        offer(stream(size / 300));
        QCOMPARE(download(), DownloadState::done); // sets up what is set up only once
        write(u"/proc/self/clear_refs"_s, "5");    // The peak is counted from here.
        const qint64 before = memory("VmRSS");
        offer(stream(size));
        QCOMPARE(download(), DownloadState::done);
        QCOMPARE(QFileInfo(file()).size(), size);
        const qint64 growth = memory("VmHWM") - before;
        qInfo("memory grew by %lld KB, the server's included", growth);
        QVERIFY(growth < 10'000); // A reply without a limit of its buffer takes nearly twice that.
    }

    void leavesNothingWhenDestroyed() {
        keepEarlierDownload();
        offer(drip(okay + "Content-Length: 100000\r\n\r\n"));
        checker_->downloadUpdate();
        QTRY_VERIFY(!server_->requests.isEmpty());
        QTest::qWait(50); // something arrives meanwhile
        QSignalSpy changes(checker_.get(), &UpdateChecker::changed);
        checker_.reset();
        QVERIFY(changes.isEmpty() && clock_.pending().empty() && isUntouched());
        QTRY_COMPARE(server_->connections(), 0);
    }
};

QTEST_GUILESS_MAIN(PackageDownloadTest)
#include "PackageDownloadTest.moc"
