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
    QVariantMap appearance;

public Q_SLOTS:
    SettingsByGroup ReadAll(const QStringList &) const {
        return {
            {QStringLiteral("org.freedesktop.appearance"), appearance},
            {QStringLiteral("org.gnome.desktop.interface"), {{QStringLiteral("enable-animations"), false}}}};
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
        daemon_.start(QStringLiteral("dbus-daemon"), {QStringLiteral("--session"), QStringLiteral("--nofork"),
                                                      QStringLiteral("--print-address")});
        QVERIFY(daemon_.waitForReadyRead(10000));
        const QByteArray address = daemon_.readAllStandardOutput().trimmed();
        qputenv("DBUS_SESSION_BUS_ADDRESS", address);
        desktop_ = QDBusConnection::connectToBus(QString::fromLatin1(address), QStringLiteral("desktop"));
        QVERIFY(desktop_->isConnected());
    }
    void cleanupTestCase() {
        QDBusConnection::disconnectFromBus(QStringLiteral("desktop"));
        daemon_.kill();
        daemon_.waitForFinished();
    }

    void recognisesABusThatAnswers() {
        const QByteArray real = qgetenv("DBUS_SESSION_BUS_ADDRESS");
        QVERIFY(sessionBusAnswers(5s));

        QLocalServer silent;
        QVERIFY(silent.listen(folder_.filePath(QStringLiteral("silent"))));
        QElapsedTimer timer;
        timer.start();
        for (const QByteArray &address :
             {QByteArray("unix:path=") + folder_.filePath(QStringLiteral("silent")).toUtf8(),
              QByteArray("unix:path=/nowhere"), QByteArray("unix:abstract="), QByteArray("nonsense"),
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
            QDBusMessage signal = QDBusMessage::createSignal(
                QString::fromLatin1(path), QString::fromLatin1(interface), QString::fromLatin1(member));
            signal << QStringLiteral("with an argument");
            desktop_->send(signal);
        };

        send("/", "com.apple.accessibility", "other");
        send("/", "com.example", "api");
        send("/some/where", "com.apple.accessibility", "api");
        QTRY_COMPARE(changes, 1);
        QTest::qWait(50);
        QCOMPARE(changes, 1);
    }

    void followsThePortalWheneverItComes() {
        DesktopAppearance appearance;
        QVERIFY(!appearance.current().dark);
        appearance.start();
        QSignalSpy changed(&appearance, &DesktopAppearance::changed);
        QTest::qWait(50);
        QCOMPARE(changed.count(), 0);

        Portal portal;
        portal.appearance = {{QStringLiteral("color-scheme"), 1U},
                             {QStringLiteral("contrast"), 1U},
                             {QStringLiteral("accent-color"), QVariant::fromValue(Rgb{1.0, 0.5, 0.0})}};
        QVERIFY(desktop_->registerObject(QStringLiteral("/org/freedesktop/portal/desktop"), &portal,
                                         QDBusConnection::ExportAllContents));
        QVERIFY(desktop_->registerService(QStringLiteral("org.freedesktop.portal.Desktop")));
        QTRY_COMPARE(changed.count(), 1);
        const DesktopPreferences expected{true, QColor::fromRgbF(1.0F, 0.5F, 0.0F), true, true};
        QVERIFY(appearance.current() == expected);

        const auto announce = [this](const char *key, const QVariant &value) {
            QDBusMessage signal = QDBusMessage::createSignal(
                QStringLiteral("/org/freedesktop/portal/desktop"),
                QStringLiteral("org.freedesktop.portal.Settings"), QStringLiteral("SettingChanged"));
            signal << QStringLiteral("org.freedesktop.appearance") << QString::fromLatin1(key)
                   << QVariant::fromValue(QDBusVariant(value));
            desktop_->send(signal);
        };
        announce("color-scheme", 2U);
        QTRY_VERIFY(!appearance.current().dark);
        announce("color-scheme", QStringLiteral("dark"));
        announce("accent-color", QVariant::fromValue(Rgb{-1.0, 0.0, 2.0}));
        QTRY_VERIFY(!appearance.current().accent);
        QVERIFY(!appearance.current().dark);
    }

    void waitsForATrayThatTakesIcons() {
        TrayHosts hosts;
        QSignalSpy available(&hosts, &TrayHosts::available);
        hosts.start();
        QTest::qWait(50);
        StatusNotifierWatcher watcher;
        QVERIFY(desktop_->registerObject(QStringLiteral("/StatusNotifierWatcher"), &watcher,
                                         QDBusConnection::ExportAllContents));
        QVERIFY(desktop_->registerService(QStringLiteral("org.kde.StatusNotifierWatcher")));
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
