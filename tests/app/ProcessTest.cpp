// One instance a user, and a clean end: watched from outside, on processes of their own.

#include "app/SingleInstance.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QLocalSocket>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>

using namespace quorbit;

namespace {

/// How long the program may take to end, in milliseconds.
#ifdef __SANITIZE_ADDRESS__
constexpr int quitting = 25'000; // the search for leaks comes last
#else
constexpr int quitting = 1000;
#endif

class Program : public QProcess {
public:
    Program(const QString &folder, const QString &mode = {}, int patience = 5000,
            const QProcessEnvironment &environment = QProcessEnvironment::systemEnvironment()) {
        setProcessChannelMode(QProcess::ForwardedErrorChannel);
        setProcessEnvironment(environment);
        // With few descriptors and any file mode, as hostile a place as a user can make it.
        start(QStringLiteral("/bin/sh"),
              {QStringLiteral("-c"), QStringLiteral("ulimit -n 64; umask 0; exec \"$0\" \"$@\""),
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

    QTemporaryDir folder_;

private Q_SLOTS:
    void endsCleanlyWithinASecond() {
        const std::tuple<int, QString, int> rows[]{
            {SIGTERM, {}, 0},
            {SIGINT, {}, 0},
            {SIGHUP, {}, 0},
            {SIGTERM, QStringLiteral("slow"), 0},
            {0, QStringLiteral("exit"), 1}}; // as Qt does without a display
        for (const auto &[signal, mode, status] : rows) {
            Program program(folder_.path(), mode);
            QVERIFY(program.says("first"));
            QElapsedTimer timer;
            timer.start();
            if (signal != 0) {
                program.send(signal);
                program.send(signal);
            }
            QVERIFY(program.ends());
            QVERIFY2(timer.elapsed() < quitting, qPrintable(QString::number(timer.elapsed())));
            QCOMPARE(program.exitStatus(), QProcess::NormalExit);
            QCOMPARE(program.exitCode(), status);
            QCOMPARE(program.output(), QByteArray("first\nhook\n"));
        }
    }

    void aSecondStartHandsOverItsRequest() {
        Program first(folder_.path());
        QVERIFY(first.says("first"));
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("XDG_ACTIVATION_TOKEN"), QStringLiteral("to\tken"));
        environment.insert(QStringLiteral("DESKTOP_STARTUP_ID"), QStringLiteral("id_TIME42"));
        Program second(folder_.path(), {}, 5000, environment);
        QVERIFY(second.ends());
        QCOMPARE(second.exitCode(), 0);
        QCOMPARE(second.output(), QByteArray("second\n"));
        QVERIFY(first.says("started again token id_TIME42"));
        QCOMPARE((StartRequest{{}, "id_TIME42"}.timestamp()), std::optional<quint32>(42));
        QCOMPARE((StartRequest{{}, "id_TIMEx"}.timestamp()), std::nullopt);
    }

    void nonsenseOnTheSocketChangesNothing() {
        Program first(folder_.path());
        QVERIFY(first.says("first"));
        for (const QByteArray &nonsense :
             {QByteArray("open\n"), QByteArray("x\ty\tz\n"), QByteArray(100000, 'x'),
              QByteArray("\0\xff\n", 3), QByteArray()}) {
            QLocalSocket client;
            client.connectToServer(folder_.filePath(QStringLiteral("instance.socket")));
            QVERIFY(client.waitForConnected());
            client.write(nonsense);
            if (!nonsense.isEmpty())
                QVERIFY(client.waitForDisconnected(5000) || client.state() == QLocalSocket::UnconnectedState);
        }
        std::vector<std::unique_ptr<QLocalSocket>> many;
        for (int i = 0; i < 200; ++i) {
            many.push_back(std::make_unique<QLocalSocket>());
            many.back()->connectToServer(folder_.filePath(QStringLiteral("instance.socket")));
            many.back()->write("never-ending");
        }
        Program second(folder_.path(), {}, 2000);
        QVERIFY(second.says("second"));
        QVERIFY(first.says("started again  "));
        for (const char *name : {"instance.socket", "instance.lock"})
            QCOMPARE(QFile::permissions(folder_.filePath(QLatin1String(name))) & QFile::Permissions(0x0077),
                     QFile::Permissions());
    }

    void takesOverFromOneThatIsEnding() {
        Program first(folder_.path(), QStringLiteral("slow"));
        QVERIFY(first.says("first"));
        first.send(SIGTERM);
        QVERIFY(first.says("hook"));
        QCOMPARE(first.state(), QProcess::Running);
        Program second(folder_.path());
        QVERIFY(second.says("first"));
        // No sooner than the other had ended.
        QVERIFY(first.state() == QProcess::NotRunning || first.waitForFinished(50));
    }

    void takesOverFromOneThatCrashed() {
        {
            Program first(folder_.path());
            QVERIFY(first.says("first"));
            first.send(SIGKILL);
            first.waitForFinished();
        }
        QVERIFY(QFile::exists(folder_.filePath(QStringLiteral("instance.socket"))));
        Program second(folder_.path());
        QVERIFY(second.says("first"));
        Program third(folder_.path());
        QVERIFY(third.says("second"));
    }

    void takesOverFromOneThatHangs() {
        for (const bool isStopped : {false, true}) {
            Program first(folder_.path(), QStringLiteral("hang"));
            QVERIFY(first.says("first"));
            if (isStopped)
                first.send(SIGSTOP);
            Program second(folder_.path(), {}, 300);
            QVERIFY(second.says("first"));
            QVERIFY(first.ends());
        }
    }

    void worksInAFolderOfAnyLength() {
        QString folder = folder_.filePath(QString(120, QLatin1Char('d')));
        QVERIFY(QDir().mkpath(folder));
        Program first(folder);
        QVERIFY(first.says("first"));
        Program second(folder);
        QVERIFY(second.says("second"));
    }

    void theFolderIsThisUsersAlone() {
        qputenv("XDG_RUNTIME_DIR", folder_.path().toLocal8Bit());
        QCOMPARE(SingleInstance::userFolder(), folder_.filePath(QStringLiteral("quorbit")));
        const auto permissions = QFile::permissions(folder_.filePath(QStringLiteral("quorbit")));
        QVERIFY(!(permissions & (QFile::ReadGroup | QFile::ReadOther | QFile::ExeOther | QFile::WriteOther)));

        // Where others may write, they might have prepared something.
        QFile::setPermissions(folder_.path(), QFile::Permissions(0x7777));
        qputenv("XDG_CACHE_HOME", folder_.filePath(QStringLiteral("cache")).toLocal8Bit());
        const auto folder = SingleInstance::userFolder();
        QVERIFY(folder && *folder != folder_.filePath(QStringLiteral("quorbit")));
        qputenv("XDG_RUNTIME_DIR", "relative");
        QCOMPARE(SingleInstance::userFolder(), folder);
    }
};

QTEST_GUILESS_MAIN(ProcessTest)
#include "ProcessTest.moc"
