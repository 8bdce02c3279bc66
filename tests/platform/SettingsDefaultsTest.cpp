#include "platform/linux/SettingsDefaults.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace quorbit;

class SettingsDefaultsTest : public QObject {
    Q_OBJECT

    QTemporaryDir folder_;
    QString file(const QByteArray &contents) const {
        const QString path = folder_.filePath(QStringLiteral("Quorbit.conf"));
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) || file.write(contents) < 0)
            qFatal("cannot write %s", qPrintable(path));
        return path;
    }

    static constexpr double bootTime = 1763847120.123456;
    static void setAll(SettingsDefaults &defaults) {
        defaults.set(QStringLiteral("quorbit.language"), QStringLiteral("zh-Hans"));
        defaults.set(QStringLiteral("AppleLanguages"), QStringList{QStringLiteral("zh-Hans")});
        defaults.set(QStringLiteral("axHealCount"), qint64{2});
        defaults.set(QStringLiteral("axHealBoot"), bootTime);
    }
    static void compareAll(const SettingsDefaults &defaults) {
        QCOMPARE(defaults.string(QStringLiteral("quorbit.language")), QStringLiteral("zh-Hans"));
        QCOMPARE(defaults.strings(QStringLiteral("AppleLanguages")), QStringList{QStringLiteral("zh-Hans")});
        QCOMPARE(defaults.integer(QStringLiteral("axHealCount")), 2);
        QVERIFY(defaults.real(QStringLiteral("axHealBoot")) == bootTime);
    }

private Q_SLOTS:
    void keepsValuesFromRunToRun() {
        const QString path = folder_.filePath(QStringLiteral("new/folder/Quorbit.conf"));
        SettingsDefaults defaults(path);
        setAll(defaults);
        defaults.synchronize();
        compareAll(SettingsDefaults(path));
        defaults.remove(QStringLiteral("AppleLanguages"));
        defaults.synchronize();
        QVERIFY(!SettingsDefaults(path).contains(QStringLiteral("AppleLanguages")));
    }

    void readsAnotherTypeAsNeutral_data() {
        QTest::addColumn<QByteArray>("stored");
        QTest::addColumn<QString>("string");
        QTest::addColumn<QStringList>("strings");
        QTest::addColumn<qint64>("integer");
        QTest::addColumn<double>("real");
        const QString none;
        QTest::newRow("words") << QByteArray("words") << QStringLiteral("words")
                               << QStringList{QStringLiteral("words")} << qint64{0} << 0.0;
        QTest::newRow("list") << QByteArray("1, 2") << none
                              << QStringList{QStringLiteral("1"), QStringLiteral("2")} << qint64{0} << 0.0;
        QTest::newRow("not a number") << QByteArray("nan") << QStringLiteral("nan")
                                      << QStringList{QStringLiteral("nan")} << qint64{0} << 0.0;
        QTest::newRow("too large") << QByteArray("99999999999999999999")
                                   << QStringLiteral("99999999999999999999")
                                   << QStringList{QStringLiteral("99999999999999999999")} << qint64{0}
                                   << 1e20;
        QTest::newRow("rectangle") << QByteArray("@Rect(1 2 3 4)") << none << QStringList() << qint64{0}
                                   << 0.0;
        QTest::newRow("broken variant")
            << QByteArray("@Variant(\\0\\0\\0\\x99zz)") << none << QStringList() << qint64{0} << 0.0;
    }
    void readsAnotherTypeAsNeutral() {
        QFETCH(QByteArray, stored);
        const SettingsDefaults defaults(file("[General]\nkey=" + stored + '\n'));
        const QString key = QStringLiteral("key");
        QTEST(defaults.string(key), "string");
        QTEST(defaults.strings(key), "strings");
        QTEST(defaults.integer(key), "integer");
        QTEST(defaults.real(key), "real");
    }

    void aUselessFileStopsNothing_data() {
        QTest::addColumn<QString>("path");
        const QString plain = file(QByteArrayLiteral("\0\xff[[[=\n=%%%\n\"unended"));
        QTest::newRow("corrupt") << plain;
        QTest::newRow("below a plain file") << plain + QStringLiteral("/Quorbit.conf");
        QTest::newRow("a folder") << folder_.path();
    }
    void aUselessFileStopsNothing() {
        QFETCH(QString, path);
        SettingsDefaults defaults(path);
        QCOMPARE(defaults.integer(QStringLiteral("axHealCount")), 0);
        setAll(defaults);
        defaults.synchronize();
        compareAll(defaults);
    }
};

QTEST_GUILESS_MAIN(SettingsDefaultsTest)
#include "SettingsDefaultsTest.moc"
