#include "platform/linux/SettingsDefaults.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>

using namespace Qt::StringLiterals;
using namespace quorbit;

class SettingsDefaultsTest : public QObject {
    Q_OBJECT

    QTemporaryDir folder_;
    QString file(const QByteArray &contents) const {
        const QString path = folder_.filePath(u"Quorbit.conf"_s);
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) || file.write(contents) < 0)
            qFatal("cannot write %s", qPrintable(path));
        return path;
    }

    static constexpr double bootTime = 1763847120.123456;
    static void setAll(SettingsDefaults &defaults) {
        defaults.set(u"quorbit.language"_s, u"zh-Hans"_s);
        defaults.set(u"AppleLanguages"_s, QStringList{u"zh-Hans"_s});
        defaults.set(u"axHealCount"_s, qint64{2});
        defaults.set(u"axHealBoot"_s, bootTime);
    }
    static void compareAll(const SettingsDefaults &defaults) {
        QCOMPARE(defaults.string(u"quorbit.language"_s), u"zh-Hans"_s);
        QCOMPARE(defaults.strings(u"AppleLanguages"_s), QStringList{u"zh-Hans"_s});
        QCOMPARE(defaults.integer(u"axHealCount"_s), 2);
        QVERIFY(defaults.real(u"axHealBoot"_s) == bootTime);
    }

private Q_SLOTS:
    void keepsValuesFromRunToRun() {
        const QString path = folder_.filePath(u"new/folder/Quorbit.conf"_s);
        SettingsDefaults defaults(path);
        setAll(defaults);
        defaults.synchronize();
        compareAll(SettingsDefaults(path));
        defaults.remove(u"AppleLanguages"_s);
        defaults.synchronize();
        QVERIFY(!SettingsDefaults(path).contains(u"AppleLanguages"_s));
    }

    void readsAnotherTypeAsNeutral() {
        const struct {
            QByteArray stored;
            QString string;
            QStringList strings;
            double real = 0;
        } rows[]{{"words", u"words"_s, {u"words"_s}},
                 {"1, 2", {}, {u"1"_s, u"2"_s}},
                 {"nan", u"nan"_s, {u"nan"_s}},
                 {"99999999999999999999", u"99999999999999999999"_s, {u"99999999999999999999"_s}, 1e20},
                 {"@Rect(1 2 3 4)", {}, {}},
                 {"@Variant(\\0\\0\\0\\x99zz)", {}, {}},
                 {"", u""_s, {u""_s}},
                 {" \"a, \\\"b\\\\\" , c", {}, {u"a, \"b\\"_s, u"c"_s}}};
        for (const auto &[stored, string, strings, real] : rows) {
            const SettingsDefaults defaults(file("[General]\nkey=" + stored + '\n'));
            QCOMPARE(defaults.string(u"key"_s), string);
            QCOMPARE(defaults.strings(u"key"_s), strings);
            QCOMPARE(defaults.integer(u"key"_s), 0);
            QCOMPARE(defaults.real(u"key"_s), real);
        }
    }

    void keepsWhatIsNotItsOwn() {
        const QByteArray before = "; a note\n[Other]\nkey=1\n\n[General]\nother = x\nrubbish \xff\n";
        const QByteArray after = "\n[More]\nkey=2\n";
        const QString path = file(before + "key = old\n" + after);
        SettingsDefaults defaults(path);
        defaults.set(u"key"_s, u"new"_s);
        QFile other(path); // Another hand writes meanwhile.
        QVERIFY(other.open(QIODevice::Append) && other.write("late=3\n") > 0);
        other.close();
        defaults.synchronize();
        QVERIFY(other.open(QIODevice::ReadOnly));
        QCOMPARE(other.readAll(), before + "key=new\n" + after + "late=3\n");
    }

    void bringsBackEveryWord() {
        const QStringList all{u"a, b"_s, u" x "_s, u"@y"_s, u"\"\\\n"_s, u"语言"_s, u""_s};
        const QString path = file("");
        SettingsDefaults defaults(path);
        defaults.set(u"all"_s, all);
        defaults.synchronize();
        QCOMPARE(SettingsDefaults(path).strings(u"all"_s), all);
    }

    /// Waiting would run into the time-out of the test.
    void neitherWaitsForNorReplacesWhatIsNoFile() {
        const QString path = folder_.filePath(u"pipe"_s);
        QCOMPARE(::mkfifo(QFile::encodeName(path).constData(), 0600), 0);
        SettingsDefaults defaults(path);
        setAll(defaults);
        defaults.synchronize();
        compareAll(defaults);
        struct stat status {};
        QVERIFY(::stat(QFile::encodeName(path).constData(), &status) == 0 && S_ISFIFO(status.st_mode));
    }

    void aUselessFileStopsNothing() {
        const QString corrupt = file(QByteArrayLiteral("\0\xff[[[=\n=%%%\n\"unended"));
        for (const QString &path : {corrupt, corrupt + u"/Quorbit.conf"_s, folder_.path()}) {
            SettingsDefaults defaults(path);
            QCOMPARE(defaults.integer(u"axHealCount"_s), 0);
            setAll(defaults);
            defaults.synchronize();
            compareAll(defaults);
        }
    }
};

QTEST_GUILESS_MAIN(SettingsDefaultsTest)
#include "SettingsDefaultsTest.moc"
