// What is heard over the session bus, from desktop services that come late, twice or not at all.

#include "platform/linux/DesktopAppearance.h"
#include "platform/linux/LinuxPlatform.h"
#include "platform/linux/SessionBus.h"
#include "platform/linux/TrayHosts.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QElapsedTimer>
#include <QLocalServer>
#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace quorbit;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

using SettingsByGroup = QMap<QString, QVariantMap>;

struct Rgb {
    double red, green, blue;
};
QDBusArgument &operator<<(QDBusArgument &argument, const Rgb &colour) {
    argument.beginStructure();
    argument << colour.red << colour.green << colour.blue;
    argument.endStructure();
    return argument;
}
const QDBusArgument &operator>>(const QDBusArgument &argument, Rgb &colour) {
    argument.beginStructure();
    argument >> colour.red >> colour.green >> colour.blue;
    argument.endStructure();
    return argument;
}

} // namespace

Q_DECLARE_METATYPE(Rgb)

class Portal : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")

public:
    SettingsByGroup settings;

public Q_SLOTS:
    SettingsByGroup ReadAll(const QStringList &groups) const {
        SettingsByGroup asked = settings;
        asked.removeIf([&](const auto &group) { return !groups.contains(group.key()); });
        return asked;
    }
};

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
        qDBusRegisterMetaType<SettingsByGroup>();
        qDBusRegisterMetaType<Rgb>();
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
        QElapsedTimer timer;
        timer.start();
        for (const QByteArray &address : {QByteArray("unix:path=") + folder_.filePath(u"silent"_s).toUtf8(),
                                          QByteArray("unix:path=/nowhere"), QByteArray("nonsense"),
                                          QByteArray("unix:path=") + QByteArray(300, 'x')}) {
            qputenv("DBUS_SESSION_BUS_ADDRESS", address);
            QVERIFY2(!sessionBusAnswers(50ms), address.constData());
        }
        QVERIFY(timer.elapsed() < 1000);
        qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nowhere;" + real);
        QVERIFY(sessionBusAnswers(5s));
        qputenv("DBUS_SESSION_BUS_ADDRESS", real);
    }

    void hearsOfAccessibilityFromAnySender() {
        LinuxPlatform platform{Bundle{}};
        int changes = 0;
        platform.observeAccessibilityChanges([&changes] { ++changes; });
        const auto send = [this](const char *path, const char *interface, const char *member) {
            desktop_->send(QDBusMessage::createSignal(QLatin1String(path), QLatin1String(interface),
                                                      QLatin1String(member))
                           << u"with an argument"_s);
        };

        send("/", "com.apple.accessibility", "other");
        send("/", "com.example", "api");
        send("/some/where", "com.apple.accessibility", "api");
        QTRY_COMPARE(changes, 1);
        QTest::qWait(50);
        QCOMPARE(changes, 1);
    }

    void asksAPortalThatComesLateAndMayBeOdd() {
        DesktopAppearance appearance;
        appearance.start();
        QTest::qWait(50);
        Portal portal;
        // One variant too many, as some portals send it.
        portal.settings[u"org.freedesktop.appearance"_s] = {
            {u"contrast"_s, QVariant::fromValue(QDBusVariant(1U))},
            {u"accent-color"_s, QVariant::fromValue(Rgb{1.0, 0.5, 0.0})}};
        QVERIFY(desktop_->registerObject(u"/org/freedesktop/portal/desktop"_s, &portal,
                                         QDBusConnection::ExportAllContents));
        QVERIFY(desktop_->registerService(u"org.freedesktop.portal.Desktop"_s));
        QTRY_VERIFY(appearance.current().highContrast);
        QCOMPARE(appearance.current().accent, QColor::fromRgbF(1.0F, 0.5F, 0.0F));
        // No colour is how a portal says that there is none.
        desktop_->send(QDBusMessage::createSignal(u"/org/freedesktop/portal/desktop"_s,
                                                  u"org.freedesktop.portal.Settings"_s, u"SettingChanged"_s)
                       << u"org.freedesktop.appearance"_s << u"accent-color"_s
                       << QVariant::fromValue(QDBusVariant(QVariant::fromValue(Rgb{-1.0, 0.0, 2.0}))));
        QTRY_VERIFY(!appearance.current().accent);
        QVERIFY(appearance.current().highContrast);
        QVERIFY(desktop_->unregisterService(u"org.freedesktop.portal.Desktop"_s));
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

        TrayHosts later;
        QSignalSpy atOnce(&later, &TrayHosts::available);
        later.start();
        QTRY_COMPARE(atOnce.count(), 1);
    }
};

QTEST_MAIN(DesktopBusTest)
#include "DesktopBusTest.moc"
