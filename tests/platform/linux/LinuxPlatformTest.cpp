#include "platform/linux/LinuxPlatform.h"
#include "platform/linux/desktop/AccessibilitySettings.h"
#include "platform/linux/process/SingleInstance.h"
#include "support/Row.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace quorbit;
using namespace quorbit::test;

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

    void knowsItsPlaceAfterAnUpgrade() {
        // A copy of this program, which runs this test alone, is taken away while it runs.
        const QString own = QCoreApplication::applicationFilePath();
        if (qEnvironmentVariableIsSet("QUORBIT_TEST_COPY")) {
            QVERIFY(QFile::remove(own));
            QCOMPARE(Bundle::ofThisProcess({}, {}).executable, own);
            return;
        }
        QVERIFY(QFile::copy(own, path("copy")));
        qputenv("QUORBIT_TEST_COPY", "1");
        QCOMPARE(QProcess::execute(path("copy"), {u"knowsItsPlaceAfterAnUpgrade"_s}), 0);
        QVERIFY(!QFile::exists(path("copy")));
    }

    void findsTheSettingsOfTheDesktop() {
        const struct {
            QString desktops, installed, command;
        } rows[]{{u"GNOME"_s, u"gnome-control-center"_s, u"gnome-control-center universal-access"_s},
                 {u"ubuntu:GNOME"_s, u"gnome-control-center"_s, u"gnome-control-center universal-access"_s},
                 {u"Budgie:GNOME"_s, u"gnome-control-center"_s, u"gnome-control-center universal-access"_s},
                 {u"Unity"_s, u"unity-control-center"_s, u"unity-control-center universal-access"_s},
                 {u"kde"_s, u"systemsettings kcmshell6"_s, u"systemsettings kcm_access"_s},
                 {u"KDE"_s, u"systemsettings5"_s, u"systemsettings5 kcm_access"_s},
                 {u"KDE"_s, u"kcmshell6"_s, u"kcmshell6 kcm_access"_s},
                 {u"XFCE"_s, u"xfce4-accessibility-settings"_s, u"xfce4-accessibility-settings"_s},
                 {u"MATE"_s, u"mate-at-properties"_s, u"mate-at-properties"_s},
                 {u"X-Cinnamon"_s, u"cinnamon-settings"_s, u"cinnamon-settings universal-access"_s},
                 {u"Pantheon"_s, u"io.elementary.settings"_s, u"io.elementary.settings universal-access"_s},
                 {u"XFCE"_s, u"gnome-control-center"_s, {}},
                 {{}, u"gnome-control-center"_s, {}}};
        for (const auto &[desktops, installed, expected] : rows) {
            const Row row(desktops.toUtf8() + " with " + installed.toUtf8());
            const auto command = accessibilitySettingsCommand(desktops, [&installed](const QString &name) {
                return installed.split(u' ').contains(name) ? name : QString();
            });
            const auto words =
                command ? QStringList(command->executable) + command->arguments : QStringList();
            QCOMPARE(words.join(u' '), expected);
        }
    }

    void theFolderForOneInstanceIsThisUsersAlone() {
        qputenv("XDG_CACHE_HOME", path("cache").toLocal8Bit());
        qputenv("XDG_RUNTIME_DIR", folder_.path().toLocal8Bit());
        QCOMPARE(SingleInstance::userFolder(), path("quorbit"));
        // Where others may write, they might have prepared something.
        QFile::setPermissions(folder_.path(), QFile::Permissions(0x7777));
        const QString folder = SingleInstance::userFolder().value_or(path("quorbit"));
        QVERIFY2(folder != path("quorbit"), "in the folder that others may write to");
        QCOMPARE(QFile::permissions(folder) & 0x0fff, QFile::Permissions(0x0700));
        qputenv("XDG_RUNTIME_DIR", "relative");
        QCOMPARE(SingleInstance::userFolder(), folder);
    }
};

QTEST_GUILESS_MAIN(LinuxPlatformTest)
#include "LinuxPlatformTest.moc"
