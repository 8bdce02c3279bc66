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
    Program(const QString &folder, const QString &mode = {}, int patience = 5000,
            const QProcessEnvironment &environment = QProcessEnvironment::systemEnvironment()) {
        setProcessChannelMode(QProcess::ForwardedErrorChannel);
        setProcessEnvironment(environment);
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

    QTemporaryDir folder_;

private Q_SLOTS:
    void endsCleanlyWithinASecond() {
        // The last ends as Qt does without a display.
        const std::tuple<int, QString, int> rows[]{{SIGTERM, u"slow"_s, 0}, {0, u"exit"_s, 1}};
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
        environment.insert(u"XDG_ACTIVATION_TOKEN"_s, u"to\tken"_s);
        environment.insert(u"DESKTOP_STARTUP_ID"_s, u"id_TIME42"_s);
        Program second(folder_.path(), {}, 5000, environment);
        QVERIFY(second.ends());
        QCOMPARE(second.exitCode(), 0);
        QCOMPARE(second.output(), QByteArray("second\n"));
        QVERIFY(first.says("started again token id_TIME42"));
        QCOMPARE((StartRequest{{}, "id_TIME42"}.timestamp()), std::optional<quint32>(42));
        QCOMPARE((StartRequest{{}, "id_TIMEx"}.timestamp()), std::nullopt);
    }

    void crowdsOnTheSocketChangeNothing() {
        Program first(folder_.path());
        QVERIFY(first.says("first"));
        std::vector<std::unique_ptr<QLocalSocket>> many;
        for (int i = 0; i < 200; ++i) {
            many.push_back(std::make_unique<QLocalSocket>());
            many.back()->connectToServer(folder_.filePath(u"instance.socket"_s));
            many.back()->write("never-ending");
        }
        Program second(folder_.path(), {}, 2000);
        QVERIFY(second.says("second"));
        QVERIFY(first.says("started again  "));
    }

    void takesOverFromOneThatIsEnding() {
        Program first(folder_.path(), u"slow"_s);
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
        QVERIFY(QFile::exists(folder_.filePath(u"instance.socket"_s)));
        Program second(folder_.path());
        QVERIFY(second.says("first"));
        Program third(folder_.path());
        QVERIFY(third.says("second"));
    }

    void takesOverFromOneThatHangs() {
        for (const bool isStopped : {false, true}) {
            Program first(folder_.path(), u"hang"_s);
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
        QCOMPARE(SingleInstance::userFolder(), folder_.filePath(u"quorbit"_s));
        const auto permissions = QFile::permissions(folder_.filePath(u"quorbit"_s));
        QVERIFY(!(permissions & (QFile::ReadGroup | QFile::ReadOther | QFile::ExeOther | QFile::WriteOther)));

        // Where others may write, they might have prepared something.
        QFile::setPermissions(folder_.path(), QFile::Permissions(0x7777));
        qputenv("XDG_CACHE_HOME", folder_.filePath(u"cache"_s).toLocal8Bit());
        const auto folder = SingleInstance::userFolder();
        QVERIFY(folder && *folder != folder_.filePath(u"quorbit"_s));
        qputenv("XDG_RUNTIME_DIR", "relative");
        QCOMPARE(SingleInstance::userFolder(), folder);
    }
};

QTEST_GUILESS_MAIN(ProcessTest)
#include "ProcessTest.moc"
