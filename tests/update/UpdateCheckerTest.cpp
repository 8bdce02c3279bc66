// How checks and downloads end; that they go to no other server is seen on the real executable.

#include "update/UpdateChecker.h"
#include "support/FakeClock.h"
#include "support/FakePlatform.h"
#include "support/FileSizeLimit.h"
#include "support/Row.h"
#include "update/PlainNetwork.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>

using namespace quorbit;
using namespace quorbit::test;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

const QUrl manifest(u"https://updates.example/version.json"_s);
const QByteArray newer = R"({"version":"2.0","download":{"macos":"https://host/pkg/app-2.0.dmg"},)"
                         R"("notes":{"zh":"修复","en":"Fixes"}})";
const QByteArray older = R"({"version":"1.4","download":{}})";
const QByteArray package(100'000, 'q');
const QString fileName = u"app-2.0.dmg"_s;
const Answer whole{package};
const Answer unending{"HTTP/1.1 200 OK\r\nContent-Length: 100000\r\n\r\n.", 200, {}, Answer::raw};

QString told(const CheckState &state) {
    if (const auto *now = std::get_if<check::UpToDate>(&state))
        return now->currentVersion + u" is newest"_s;
    if (const auto *now = std::get_if<check::Available>(&state))
        return now->update.version + u" is there"_s;
    if (const auto *now = std::get_if<check::Failed>(&state))
        return QStringList{u"network"_s, u"server"_s, u"parse"_s}.value(static_cast<int>(now->reason));
    return u"checking"_s;
}

QByteArray contents(const QString &path) {
    QFile file(path);
    return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray("unreadable");
}

void write(const QString &path, const QByteArray &text) {
    QFile file(path);
    QVERIFY(file.open(QFile::WriteOnly) && file.write(text) == text.size());
}

/// Everything in a folder, hidden or not.
QStringList entries(const QString &folder) {
    return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
}

} // namespace

class UpdateCheckerTest : public QObject {
    Q_OBJECT

    std::optional<FakeService> server_;
    std::optional<QTemporaryDir> home_;
    FakePlatform platform_;
    FakeClock clock_;
    std::unique_ptr<UpdateChecker> checker_;

    void announce(const Answer &answer) { server_->answer("GET /version.json", answer); }
    QString state() const { return told(checker_->state().state); }
    /// Runs one check to its end.
    QString check() {
        checker_->check();
        [this] { QTRY_VERIFY(state() != u"checking"); }(); // which returns, when it fails, from this alone
        return state();
    }

    QString downloads() const { return home_->filePath(u"Downloads"_s); }
    QString file() const { return downloads() + u'/' + fileName; }
    DownloadState downloadState() const { return checker_->state().downloadState; }
    DownloadState download(const Answer &answer = whole) {
        server_->answer("GET /pkg/app-2.0.dmg", answer);
        announce({newer});
        check();
        checker_->downloadUpdate();
        [this] { QTRY_VERIFY(downloadState() != DownloadState::downloading); }();
        return downloadState();
    }
    /// Keeps an earlier download, and begins one that does not end.
    void downloadWithoutEnd() {
        QVERIFY(QDir().mkpath(downloads()));
        write(file(), "the one before");
        server_->answer("GET /pkg/app-2.0.dmg", unending);
        announce({newer});
        check();
        checker_->downloadUpdate();
        QTRY_COMPARE(server_->count("GET /pkg/app-2.0.dmg"), 1);
        QTest::qWait(50); // the beginning arrives
    }
    bool isUntouched() const {
        return entries(downloads()) == QStringList{fileName} && contents(file()) == "the one before";
    }

private Q_SLOTS:
    void init() {
        server_.emplace();
        home_.emplace();
        platform_ = FakePlatform();
        platform_.version = u"1.4.1"_s;
        platform_.downloads = downloads();
        clock_ = FakeClock();
        checker_ = std::make_unique<UpdateChecker>(platform_, clock_, manifest, QStringList{u"zh-Hans"_s},
                                                   plainNetwork(*server_));
    }
    void cleanup() { checker_.reset(); }

    void tellsTheOutcome() {
        const QByteArray huge(2LL * 1024 * 1024, ' ');
        const std::tuple<const char *, Answer, QString> rows[]{
            {"newer", {newer}, u"2.0 is there"_s},
            {"older", {older}, u"1.4.1 is newest"_s},
            {"missing, with a manifest", {newer, 404}, u"server"_s},
            {"missing, with a huge page", {huge, 404}, u"server"_s},
            {"not JSON", {"<html>"}, u"parse"_s},
            {"too large", {newer + huge}, u"parse"_s},
            {"cut off", {older, 200, {}, Answer::cutOff}, u"network"_s},
            {"a circle", {{}, 302, {"Location: /version.json"}}, u"network"_s}};
        for (const auto &[name, answer, outcome] : rows) {
            const Row row(name);
            announce(answer);
            clock_.advance(1s);
            QCOMPARE(check(), outcome);
            QCOMPARE(checker_->state().lastChecked,
                     QDateTime::fromMSecsSinceEpoch(static_cast<qint64>(clock_.now()) * 1000));
        }
        QCOMPARE(server_->count("GET /version.json"), 7 + 1 + 5);
        server_->close();
        QCOMPARE(check(), u"network"_s);
    }

    void keepsAnUpdateThroughFailures() {
        announce({newer});
        check();
        const auto available = checker_->state().available;
        QCOMPARE(available->releaseNotesText, u"修复"_s);
        announce({{}, 500});
        check();
        QVERIFY(checker_->state().available == available);
        announce({older});
        check();
        QVERIFY(!checker_->state().available);
    }

    void asksNothingOfOtherAddresses() {
        platform_.version.reset(); // counts as 0.0.0
        const std::pair<QByteArray, DownloadState> rows[]{{"", DownloadState::idle},
                                                          {"https://host:port/app.dmg", DownloadState::idle},
                                                          {"http://host/app.dmg", DownloadState::failed},
                                                          {"file:///etc/hostname", DownloadState::failed},
                                                          {"https://host/", DownloadState::failed}};
        for (const auto &[address, outcome] : rows) {
            const Row row(address);
            announce({R"({"version":"0.1","download":{"macos":")" + address + R"("}})"});
            QCOMPARE(check(), u"0.1 is there"_s);
            checker_->downloadUpdate();
            QCOMPARE(downloadState(), outcome);
        }
        QCOMPARE(server_->seen.size(), std::size(rows));
    }

    void limitsTheWholeExchange() {
        announce(unending);
        checker_->check();
        for (int second = 0; second < 8; ++second) {
            QTRY_COMPARE(server_->openConnections(), 1);
            server_->say(".");
            QTest::qWait(30);
            QCOMPARE(state(), u"checking"_s);
            clock_.advance(1s);
        }
        QCOMPARE(state(), u"network"_s);
        QTRY_COMPARE(server_->openConnections(), 0);
    }

    void checksAtOnceAndEveryTwelveHours() {
        announce({older});
        checker_->startAutoChecking();
        QTRY_COMPARE(state(), u"1.4.1 is newest"_s);
        clock_.advance(12h - 1s);
        QCOMPARE(state(), u"1.4.1 is newest"_s);
        clock_.advance(1s);
        QCOMPARE(state(), u"checking"_s);
        checker_->startAutoChecking(); // begins the period anew
        QCOMPARE(clock_.pending().back(), FakeClock::Delay(12h));
    }

    void keepsAndRevealsThePackage() {
        const QByteArray chunked = "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n186a0\r\n";
        server_->answer("GET /other/name.bin", {package});
        const struct {
            const char *name;
            Answer answer;
            QByteArray kept = package;
        } rows[]{{"with length", {package, 200, {"Content-Disposition: attachment; filename=other.dmg"}}},
                 {"in chunks", {chunked + package + "\r\n0\r\n\r\n", 200, {}, Answer::raw}},
                 {"from elsewhere", {"moved", 302, {"Location: /other/name.bin"}}},
                 {"nothing", {}, {}}};
        const mode_t mask = umask(022);
        for (const auto &[name, answer, kept] : rows) {
            const Row row(name);
            platform_.revealed.clear();
            QCOMPARE(download(answer), DownloadState::done);
            QCOMPARE(entries(downloads()), QStringList{fileName});
            QCOMPARE(contents(file()), kept);
            QCOMPARE(QFile::permissions(file()) & 0x0fff, QFile::Permissions(0x0644));
            QCOMPARE(platform_.revealed, QStringList{file()});
            QCOMPARE(server_->seen.back().header("accept-encoding"), QByteArrayList{"identity"});
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
            QCOMPARE(download(), DownloadState::done);
            QCOMPARE(entries(downloads()), QStringList{fileName});
            QCOMPARE(contents(file()), package);
            QCOMPARE(contents(outside + u"/file"_s), "precious");
            QVERIFY(QFile::remove(file()) && QFile::link(outside, file()));
        }
    }

    void leavesNothingOfAFailure() {
        QVERIFY(QDir().mkpath(downloads()));
        write(file(), "the one before");
        const std::pair<const char *, Answer> rows[]{
            {"endless error page", {"HTTP/1.1 500 Error\r\n\r\n.", 200, {}, Answer::raw}},
            {"cut off", {package, 200, {}, Answer::cutOff}},
            {"of unknown length", {"HTTP/1.1 200 OK\r\n\r\n" + package, 200, {}, Answer::raw}}};
        for (const auto &[name, answer] : rows) {
            const Row row(name);
            QCOMPARE(download(answer), DownloadState::failed);
            QVERIFY(isUntouched() && platform_.revealed.isEmpty());
        }
        {
            const FileSizeLimit limit(4096);
            QCOMPARE(download(), DownloadState::failed);
            QVERIFY(isUntouched());
        }
        for (const std::optional<QString> &folder : {std::optional<QString>(), std::optional(file())}) {
            platform_.downloads = folder;
            QCOMPARE(download(), DownloadState::failed);
            QVERIFY(isUntouched());
        }
    }

    void givesUpWhenTheServerStalls() {
        downloadWithoutEnd();
        for (int minute = 0; minute < 3; ++minute) {
            clock_.advance(59s);
            QCOMPARE(downloadState(), DownloadState::downloading);
            server_->say(".");
            QTest::qWait(30);
        }
        checker_->downloadUpdate(); // one at a time
        clock_.advance(60s);
        QCOMPARE(downloadState(), DownloadState::failed);
        QVERIFY(isUntouched());
        QTRY_COMPARE(server_->openConnections(), 0);
        QCOMPARE(server_->count("GET /pkg/app-2.0.dmg"), 1);
    }

    void endsAtOnceWhenDestroyed() {
        downloadWithoutEnd();
        announce(unending);
        checker_->startAutoChecking();
        QTRY_COMPARE(server_->openConnections(), 2);
        int changes = 0;
        connect(checker_.get(), &UpdateChecker::changed, this, [&changes] { ++changes; });
        checker_.reset();
        QCOMPARE(changes, 0);
        QVERIFY(clock_.pending().empty() && isUntouched());
        QTRY_COMPARE(server_->openConnections(), 0);
    }
};

QTEST_GUILESS_MAIN(UpdateCheckerTest)
#include "UpdateCheckerTest.moc"
