#include "platform/linux/LinuxPlatform.h"
#include "platform/SystemClock.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace quorbit;
using namespace std::chrono_literals;

namespace {

QByteArray contents(const QString &path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool hasZombies() {
    siginfo_t info{};
    return ::waitid(P_ALL, 0, &info, WEXITED | WNOHANG | WNOWAIT) == 0 && info.si_pid != 0;
}

} // namespace

class LinuxPlatformTest : public QObject {
    Q_OBJECT

    QTemporaryDir folder_;
    QString path(const char *name) const { return folder_.filePath(QString::fromLatin1(name)); }
    std::unique_ptr<ChildProcess> shell(LinuxPlatform &platform, const QString &script) const {
        return platform.launch(u"/bin/sh"_s, {u"-c"_s, script, path("out")});
    }

private Q_SLOTS:
    void init() { QFile::remove(path("out")); }

    void launchedProgramStartsAfresh() {
        // Neither this process's signal settings nor its open files may reach the program, but its
        // environment and working directory do.
        const int descriptor = ::open("/dev/null", O_RDONLY);
        sigset_t blocked;
        sigemptyset(&blocked);
        sigaddset(&blocked, SIGTERM);
        ::pthread_sigmask(SIG_BLOCK, &blocked, nullptr);
        const auto previous = ::signal(SIGPIPE, SIG_IGN);
        qputenv("QUORBIT_TEST_MARK", "marked");
        LinuxPlatform platform{Bundle{}};
        // The threading library keeps the signals 32 and 33 for itself.
        const auto child =
            shell(platform, QStringLiteral("{ awk '/^SigBlk/ {print $2} /^SigIgn/ {print $2}' "
                                           "/proc/self/status | sed s/180000000/000000000/; "
                                           "[ -e /proc/$$/fd/%1 ] && echo leak; "
                                           "echo $QUORBIT_TEST_MARK $PWD; } >$0.new; mv $0.new $0")
                                .arg(descriptor));
        QTRY_VERIFY(QFile::exists(path("out")));
        const QByteArray none = QByteArray(16, '0') + '\n';
        QCOMPARE(contents(path("out")), none + none + "marked " + QDir::currentPath().toLocal8Bit() + '\n');
        ::signal(SIGPIPE, previous);
        ::pthread_sigmask(SIG_UNBLOCK, &blocked, nullptr);
        ::close(descriptor);
    }

    void terminatesAndLeavesNoZombie() {
        LinuxPlatform platform{Bundle{}};
        const auto child =
            shell(platform, u"trap 'echo term >>$0; exit' TERM; touch $0; while :; do sleep 0.05; done"_s);
        QTRY_VERIFY(QFile::exists(path("out")));
        QVERIFY(child->isRunning());
        child->terminate();
        QTRY_VERIFY(!child->isRunning());
        child->terminate();
        QCOMPARE(contents(path("out")), QByteArray("term\n"));

        // Nobody asks about this one; it is reaped all the same, also after its handle is gone.
        shell(platform, u"touch $0.second"_s);
        QTRY_VERIFY(QFile::exists(path("out.second")));
        QTRY_VERIFY(!hasZombies());
    }

    void failedLaunchTellsTheSystemsReason() {
        LinuxPlatform platform{Bundle{}};
        for (const auto &[executable, error] :
             {std::pair(path("nothing here"), ENOENT), std::pair(folder_.path(), EACCES)}) {
            QString message;
            try {
                platform.launch(executable, {});
            } catch (const LaunchError &failure) {
                message = QString::fromUtf8(failure.what());
            }
            QVERIFY2(message.endsWith(qt_error_string(error)), qPrintable(message));
        }
    }

    void alarmsRingOnceUnlessTheyAreDestroyed() {
        SystemClock clock;
        int rings = 0;
        std::unique_ptr<Clock::Alarm> alarm;
        alarm = clock.after(20ms, [&] {
            ++rings;
            alarm.reset();
        });
        clock.after(10ms, [&] { rings += 100; }).reset();
        QTest::qWait(100);
        QCOMPARE(rings, 1);
    }
};

QTEST_GUILESS_MAIN(LinuxPlatformTest)
#include "LinuxPlatformTest.moc"
