#include "platform/SettingsDefaults.h"

#include "support/FileSizeLimit.h"
#include "support/Row.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace quorbit;
using namespace quorbit::test;

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
        } rows[]{{.stored = R"("语言")", .string = u"语言"_s},
                 {.stored = R"(["a, b", ""])", .strings = {u"a, b"_s, u""_s}},
                 {.stored = R"(["a", 1])"},
                 {.stored = "9007199254740993", .integer = 9007199254740993, .real = 9007199254740992},
                 {.stored = "1e20", .real = 1e20},
                 {.stored = "0.5", .real = 0.5},
                 {.stored = "null"}};
        for (const auto &[stored, string, strings, integer, real] : rows) {
            const Row row(stored);
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

    void keepsTheOldFileUntilTheNewOneIsWhole() {
        const struct {
            const char *name;
            QByteArray old;
            bool isReplaced = true, isKeptAside = false;
        } rows[]{{.name = "ordinary", .old = R"({"key": "old"})"},
                 {.name = "broken", .old = R"({"key": )", .isKeptAside = true},
                 // What could not be read again is not written either.
                 {.name = "nearly too long",
                  .old = "{\"key\": \"" + QByteArray(65'500, 'x') + "\"}",
                  .isReplaced = false}};
        for (const auto &[name, old, isReplaced, isKeptAside] : rows) {
            const Row row(name);
            const QTemporaryDir folder;
            const QString path = folder.filePath(u"settings.json"_s);
            QVERIFY(QFile::rename(file(old), path));
            SettingsDefaults defaults(path);
            defaults.set(u"new"_s, QString(100, u'y'));
            {
                const FileSizeLimit limit(8);
                QVERIFY(!defaults.synchronize());
            }
            QCOMPARE(contents(path), old);
            QCOMPARE(QDir(folder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
                     QStringList{u"settings.json"_s});
            QCOMPARE(defaults.string(u"new"_s).size(), 100); // It holds for this run.
            QCOMPARE(defaults.synchronize(), isReplaced);
            QCOMPARE(contents(path) != old, isReplaced);
            QCOMPARE(contents(path + u".broken"_s), isKeptAside ? old : QByteArray());
        }
    }

    void writesThroughLinksAndOverNothingElse() {
        const QString path = folder_.filePath(u"settings.json"_s);
        const QString target = folder_.filePath(u"elsewhere.json"_s);
        const auto store = [&path] {
            SettingsDefaults defaults(path);
            defaults.set(u"key"_s, u"new"_s);
            return defaults.synchronize();
        };
        QVERIFY(QFile::rename(file("{}"), target));
        const QFile::Permissions own =
            QFile::ReadOwner | QFile::WriteOwner | QFile::ReadUser | QFile::WriteUser;
        QVERIFY(QFile::setPermissions(target, own));
        QVERIFY(QFile::link(u"elsewhere.json"_s, path));
        QVERIFY(store());
        QCOMPARE(QFile::symLinkTarget(path), target);
        QCOMPARE(SettingsDefaults(target).string(u"key"_s), u"new"_s);
        QCOMPARE(QFile::permissions(target), own);
        QVERIFY(QFile::remove(target));
        QVERIFY(store());
        QVERIFY(QFile::remove(target));

        QVERIFY(QFile::link(u"settings.json"_s, target)); // in a circle
        QVERIFY(!store());
        QVERIFY(QFile::remove(path) && QFile::link(u"nowhere/settings.json"_s, path));
        QVERIFY(!store());
        QVERIFY(!QFile::exists(folder_.filePath(u"nowhere"_s)));
        QVERIFY(QFile::remove(path) && QDir().mkdir(path));
        QVERIFY(!store());
    }
};

QTEST_GUILESS_MAIN(SettingsDefaultsTest)
#include "SettingsDefaultsTest.moc"
