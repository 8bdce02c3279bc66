#include "platform/SettingsDefaults.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace quorbit;

class SettingsDefaultsTest : public QObject {
    Q_OBJECT

    QTemporaryDir folder_;
    QString file(const QByteArray &contents) const {
        QString path = folder_.filePath(u"settings.json"_s);
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) || file.write(contents) < 0)
            qFatal("cannot write %s", qPrintable(path));
        return path;
    }

    static QByteArray contents(const QString &path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

private Q_SLOTS:
    void keepsValuesFromRunToRun() {
        const QString path = folder_.filePath(u"new/folder/settings.json"_s);
        SettingsDefaults defaults(path);
        defaults.set(u"string"_s, u"zh-Hans"_s);
        defaults.set(u"strings"_s, QStringList{u"zh-Hans"_s});
        defaults.set(u"integer"_s, qint64{2});
        defaults.set(u"real"_s, 1763847120.123456);
        defaults.synchronize();
        const SettingsDefaults again(path);
        QCOMPARE(again.string(u"string"_s), u"zh-Hans"_s);
        QCOMPARE(again.strings(u"strings"_s), QStringList{u"zh-Hans"_s});
        QCOMPARE(again.integer(u"integer"_s), 2);
        QVERIFY(again.real(u"real"_s) == 1763847120.123456);
        defaults.remove(u"strings"_s);
        defaults.synchronize();
        QVERIFY(!SettingsDefaults(path).contains(u"strings"_s));
    }

    void readsAnotherTypeAsNeutral() {
        const struct {
            QByteArray stored;
            QString string = {};
            QStringList strings = {};
            qint64 integer = 0;
            double real = 0;
        } rows[]{{R"("语言")", u"语言"_s},
                 {R"(["a, b", ""])", {}, {u"a, b"_s, u""_s}},
                 {R"(["a", 1])"},
                 {"9007199254740993", {}, {}, 9007199254740993, 9007199254740992},
                 {"1e20", {}, {}, 0, 1e20},
                 {"0.5", {}, {}, 0, 0.5},
                 {"null"}};
        for (const auto &[stored, string, strings, integer, real] : rows) {
            const SettingsDefaults defaults(file(R"({"key": )" + stored + '}'));
            QCOMPARE(defaults.string(u"key"_s), string);
            QCOMPARE(defaults.strings(u"key"_s), strings);
            QCOMPARE(defaults.integer(u"key"_s), integer);
            QCOMPARE(defaults.real(u"key"_s), real);
        }
    }

    void keepsWhatIsNotItsOwn() {
        const QString path = file(R"({"key": "old", "other": [1]})");
        SettingsDefaults defaults(path);
        defaults.set(u"key"_s, u"new"_s);
        file(R"({"key": "old", "other": [2]})"); // Another hand writes meanwhile.
        defaults.synchronize();
        QCOMPARE(contents(path).simplified(), QByteArray(R"({ "key": "new", "other": [ 2 ] })"));
    }

    void keepsABrokenFileAside() {
        const QString path = file(R"({"key": )");
        SettingsDefaults defaults(path);
        QVERIFY(!QFile::exists(path + u".broken"_s));
        defaults.set(u"key"_s, u"new"_s);
        defaults.synchronize();
        QCOMPARE(SettingsDefaults(path).string(u"key"_s), u"new"_s);
        QCOMPARE(contents(path + u".broken"_s), QByteArray(R"({"key": )"));
    }
};

QTEST_GUILESS_MAIN(SettingsDefaultsTest)
#include "SettingsDefaultsTest.moc"
