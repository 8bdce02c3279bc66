// One instance a user, and a clean end: watched from outside, on processes of their own.

#include "platform/linux/process/SingleInstance.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QLocalSocket>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>

using namespace quorbit;
using namespace Qt::StringLiterals;

namespace {

/// How long the program may take to end, in milliseconds.
#ifdef __SANITIZE_ADDRESS__
constexpr int quitting = 25'000; // the search for leaks comes last
#else
constexpr int quitting = 1000;
#endif

class Program : public QProcess {
public:
    explicit Program(const QString &folder, const QString &mode = {}, int patience = 5000) {
        setProcessChannelMode(QProcess::ForwardedErrorChannel);
        // With few descriptors and any file mode, as hostile a place as a user can make it.
        start(u"/bin/sh"_s, {u"-c"_s, u"ulimit -n 64; umask 0; exec \"$0\" \"$@\""_s,
                             QStringLiteral(SHELL_PROGRAM), folder, QString::number(patience), mode});
    }
    ~Program() override {
        kill();
        waitForFinished();
    }

    bool says(const QByteArray &line) {
        return QTest::qWaitFor([&] { return (output_ += readAllStandardOutput()).contains(line + '\n'); },
                               10000);
    }
    bool ends() { return state() == QProcess::NotRunning || waitForFinished(4000 + quitting); }
    const QByteArray &output() { return output_ += readAllStandardOutput(); }
    void send(int signal) const { ::kill(static_cast<pid_t>(processId()), signal); }

private:
    QByteArray output_;
};

} // namespace

class ProcessTest : public QObject {
    Q_OBJECT

    QTemporaryDir top_;
    // Longer than the address of a socket may be.
    const QString folder_ = top_.filePath(QString(120, u'd'));

private Q_SLOTS:
    void initTestCase() { QVERIFY(QDir().mkpath(folder_)); }

    void endsCleanlyWithinASecond() {
        Program program(folder_, u"slow"_s);
        QVERIFY(program.says("first"));
        QElapsedTimer timer;
        timer.start();
        program.send(SIGTERM);
        program.send(SIGTERM);
        QVERIFY(program.ends());
        QVERIFY2(timer.elapsed() < quitting, qPrintable(QString::number(timer.elapsed())));
        QVERIFY(program.exitStatus() == QProcess::NormalExit && program.exitCode() == 0);
        QCOMPARE(program.output(), QByteArray("first\nhook\n"));
    }

    void aSecondStartHandsOverItsRequestInACrowd() {
        Program first(top_.path());
        QVERIFY(first.says("first"));
        std::vector<std::unique_ptr<QLocalSocket>> many;
        for (int i = 0; i < 200; ++i) {
            many.push_back(std::make_unique<QLocalSocket>());
            many.back()->connectToServer(top_.filePath(u"instance.socket"_s));
        }
        qputenv("DESKTOP_STARTUP_ID", "id\t_TIME42");
        Program second(top_.path());
        QVERIFY(second.ends());
        QCOMPARE(second.exitCode(), 0);
        QCOMPARE(second.output(), QByteArray("second\n"));
        QVERIFY(first.says("started again  id_TIME42"));
    }

    void takesOverFromOneThatIsEnding() {
        Program first(folder_, u"slow"_s);
        QVERIFY(first.says("first"));
        first.send(SIGTERM);
        QVERIFY(first.says("hook"));
        QCOMPARE(first.state(), QProcess::Running);
        Program second(folder_);
        QVERIFY(second.says("first"));
        // No sooner than the other had ended.
        QVERIFY(first.state() == QProcess::NotRunning || first.waitForFinished(50));
    }

    void takesOverFromOneThatCrashed() {
        {
            Program first(folder_);
            QVERIFY(first.says("first"));
            first.send(SIGKILL);
            first.waitForFinished();
        }
        QVERIFY(QFile::exists(folder_ + u"/instance.socket"_s));
        Program second(folder_);
        QVERIFY(second.says("first"));
        Program third(folder_);
        QVERIFY(third.says("second"));
    }

    void takesOverFromOneThatHangs() {
        for (const bool isStopped : {false, true}) {
            Program first(folder_, u"hang"_s);
            QVERIFY(first.says("first"));
            if (isStopped)
                first.send(SIGSTOP);
            Program second(folder_, {}, 300);
            QVERIFY(second.says("first"));
            QVERIFY(first.ends());
        }
    }

    void theFolderIsThisUsersAlone() {
        qputenv("XDG_CACHE_HOME", top_.filePath(u"cache"_s).toLocal8Bit());
        qputenv("XDG_RUNTIME_DIR", top_.path().toLocal8Bit());
        QCOMPARE(SingleInstance::userFolder(), top_.filePath(u"quorbit"_s));
        // Where others may write, they might have prepared something.
        QFile::setPermissions(top_.path(), QFile::Permissions(0x7777));
        const auto folder = SingleInstance::userFolder();
        QVERIFY(folder && *folder != top_.filePath(u"quorbit"_s));
        const auto others = QFile::ReadGroup | QFile::ReadOther | QFile::ExeOther | QFile::WriteOther;
        QVERIFY(!(QFile::permissions(*folder) & others));
        qputenv("XDG_RUNTIME_DIR", "relative");
        QCOMPARE(SingleInstance::userFolder(), folder);
    }
};

QTEST_GUILESS_MAIN(ProcessTest)
#include "ProcessTest.moc"
