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

const QString portalName = QStringLiteral("org.freedesktop.portal.Desktop");
const QString appearanceGroup = QStringLiteral("org.freedesktop.appearance");
const QString desktopGroup = QStringLiteral("org.gnome.desktop.interface");

class Portal : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")

public:
    SettingsByGroup settings;

public Q_SLOTS:
    SettingsByGroup ReadAll(const QStringList &groups) const {
        SettingsByGroup asked;
        for (auto group = settings.cbegin(); group != settings.cend(); ++group) {
            if (groups.contains(group.key()))
                asked.insert(group.key(), group.value());
        }
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

    void followsThePortalThatComesChangesAndReturns() {
        DesktopAppearance appearance;
        QVERIFY(!appearance.current().dark);
        appearance.start();
        QSignalSpy changed(&appearance, &DesktopAppearance::changed);
        QTest::qWait(50);
        QCOMPARE(changed.count(), 0);

        Portal portal;
        portal.settings[appearanceGroup] = {
            {QStringLiteral("color-scheme"), 1U},
            // One variant too many, as some portals send it.
            {QStringLiteral("contrast"), QVariant::fromValue(QDBusVariant(1U))},
            {QStringLiteral("accent-color"), QVariant::fromValue(Rgb{1.0, 0.5, 0.0})}};
        portal.settings[desktopGroup] = {{QStringLiteral("font-name"), QStringLiteral("Inter 12")}};
        QVERIFY(desktop_->registerObject(QStringLiteral("/org/freedesktop/portal/desktop"), &portal,
                                         QDBusConnection::ExportAllContents));
        QVERIFY(desktop_->registerService(portalName));
        QTRY_COMPARE(changed.count(), 1);
        QFont inter(QStringLiteral("Inter"));
        inter.setPointSize(12);
        DesktopPreferences expected{.dark = true,
                                    .accent = QColor::fromRgbF(1.0F, 0.5F, 0.0F),
                                    .highContrast = true,
                                    .reducedMotion = false,
                                    .font = inter};
        QVERIFY(appearance.current() == expected);

        const auto announce = [this](const QString &group, const char *key, const QVariant &value) {
            QDBusMessage signal = QDBusMessage::createSignal(
                QStringLiteral("/org/freedesktop/portal/desktop"),
                QStringLiteral("org.freedesktop.portal.Settings"), QStringLiteral("SettingChanged"));
            signal << group << QString::fromLatin1(key) << QVariant::fromValue(QDBusVariant(value));
            desktop_->send(signal);
        };
        announce(appearanceGroup, "accent-color", QVariant::fromValue(Rgb{-1.0, 0.0, 2.0}));
        QTRY_VERIFY(!appearance.current().accent);
        announce(desktopGroup, "text-scaling-factor", 1.5);
        QTRY_COMPARE(appearance.current().textScale, 1.5);
        announce(appearanceGroup, "color-scheme", QVariant::fromValue(QDBusVariant(2U)));
        QTRY_VERIFY(!appearance.current().dark);

        // A portal that goes leaves its last word; the one that returns is asked anew.
        QVERIFY(desktop_->unregisterService(portalName));
        QTest::qWait(50);
        QVERIFY(appearance.current().highContrast);
        portal.settings = {{appearanceGroup, {{QStringLiteral("color-scheme"), 1U}}}};
        QVERIFY(desktop_->registerService(portalName));
        expected = DesktopPreferences();
        expected.dark = true;
        QTRY_VERIFY(appearance.current() == expected);
        QVERIFY(desktop_->unregisterService(portalName));
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
