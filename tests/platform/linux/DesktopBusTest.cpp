// What is heard over the session bus from a desktop that comes late or not at all.

#include "platform/linux/desktop/SessionBus.h"
#include "platform/linux/desktop/TrayHosts.h"

#include <QDBusConnection>
#include <QLocalServer>
#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace quorbit;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

class StatusNotifierWatcher : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
    Q_PROPERTY(bool IsStatusNotifierHostRegistered MEMBER hasHost)

public:
    bool hasHost = false;

Q_SIGNALS:
    void StatusNotifierHostRegistered();
};

class DesktopBusTest : public QObject {
    Q_OBJECT

    QTemporaryDir folder_;
    QProcess daemon_;
    std::optional<QDBusConnection> desktop_;

private Q_SLOTS:
    void initTestCase() {
        daemon_.start(u"dbus-daemon"_s, {u"--session"_s, u"--nofork"_s, u"--print-address"_s});
        QVERIFY(daemon_.waitForReadyRead(10000));
        const QByteArray address = daemon_.readAllStandardOutput().trimmed();
        qputenv("DBUS_SESSION_BUS_ADDRESS", address);
        desktop_ = QDBusConnection::connectToBus(QString::fromLatin1(address), u"desktop"_s);
        QVERIFY(desktop_->isConnected());
    }
    void cleanupTestCase() {
        QDBusConnection::disconnectFromBus(u"desktop"_s);
        daemon_.kill();
        daemon_.waitForFinished();
    }

    void recognisesABusThatAnswers() {
        const QByteArray real = qgetenv("DBUS_SESSION_BUS_ADDRESS");
        QVERIFY(sessionBusAnswers(5s));
        QLocalServer silent;
        QVERIFY(silent.listen(folder_.filePath(u"silent"_s)));
        for (const QByteArray &address : {QByteArray("unix:path=") + silent.fullServerName().toUtf8(),
                                          QByteArray("nonsense"), "unix:path=" + QByteArray(300, 'x')}) {
            qputenv("DBUS_SESSION_BUS_ADDRESS", address);
            QVERIFY2(!sessionBusAnswers(50ms), address.constData());
        }
        qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nowhere;" + real);
        QVERIFY(sessionBusAnswers(5s));
        qputenv("DBUS_SESSION_BUS_ADDRESS", real);
    }

    void waitsForATrayThatTakesIcons() {
        TrayHosts hosts;
        QSignalSpy available(&hosts, &TrayHosts::available);
        hosts.start();
        QTest::qWait(50);
        StatusNotifierWatcher watcher;
        QVERIFY(desktop_->registerObject(u"/StatusNotifierWatcher"_s, &watcher,
                                         QDBusConnection::ExportAllContents));
        QVERIFY(desktop_->registerService(u"org.kde.StatusNotifierWatcher"_s));
        QTest::qWait(100);
        QCOMPARE(available.count(), 0);
        watcher.hasHost = true;
        Q_EMIT watcher.StatusNotifierHostRegistered();
        QTRY_COMPARE(available.count(), 1);
    }
};

QTEST_MAIN(DesktopBusTest)
#include "DesktopBusTest.moc"
