#include "platform/SettingsDefaults.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>

#include <sys/resource.h>

using namespace Qt::StringLiterals;
using namespace quorbit;

namespace {

/// What is written beyond that fails, as on a full disk.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes) {
        ::signal(SIGXFSZ, SIG_IGN);
        ::getrlimit(RLIMIT_FSIZE, &former_);
        const rlimit limit{bytes, former_.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit() { ::setrlimit(RLIMIT_FSIZE, &former_); }
    FileSizeLimit(const FileSizeLimit &) = delete;
    FileSizeLimit &operator=(const FileSizeLimit &) = delete;

private:
    rlimit former_{};
};

} // namespace

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

    void keepsTheOldFileUntilTheNewOneIsWhole() {
        const QString path = folder_.filePath(u"full/settings.json"_s);
        QVERIFY(QDir().mkpath(folder_.filePath(u"full"_s)));
        const QByteArray broken = R"({"key": )";
        // What could not be read again is not written either.
        const QByteArray nearlyTooLong = "{\"key\": \"" + QByteArray(65'500, 'x') + "\"}";
        for (const QByteArray &old : {QByteArray(R"({"key": "old"})"), broken, nearlyTooLong}) {
            QVERIFY(QFile::rename(file(old), path));
            SettingsDefaults defaults(path);
            defaults.set(u"new"_s, QString(100, u'y'));
            {
                const FileSizeLimit limit(8);
                QVERIFY(!defaults.synchronize());
            }
            QCOMPARE(contents(path), old);
            QCOMPARE(QDir(folder_.filePath(u"full"_s))
                         .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
                     QStringList{u"settings.json"_s});
            QCOMPARE(defaults.string(u"new"_s).size(), 100); // It holds for this run.
            const bool isTooLong = old == nearlyTooLong;
            QCOMPARE(defaults.synchronize(), !isTooLong);
            QCOMPARE(contents(path) == old, isTooLong);
            QCOMPARE(QFile::remove(path + u".broken"_s), old == broken);
            QFile::remove(path);
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
        for (const bool isThere : {true, false}) {
            QFile::remove(target);
            if (isThere) {
                QVERIFY(QFile::rename(file("{}"), target));
                QVERIFY(QFile::setPermissions(target, QFile::ReadOwner | QFile::WriteOwner));
            }
            QFile::remove(path);
            QVERIFY(QFile::link(u"elsewhere.json"_s, path));
            QVERIFY(store());
            QVERIFY(QFile(path).symLinkTarget() == target);
            QCOMPARE(SettingsDefaults(target).string(u"key"_s), u"new"_s);
            QCOMPARE(!(QFile::permissions(target) & QFile::ReadOther), isThere);
        }
        QFile::remove(target);
        QVERIFY(QFile::link(u"settings.json"_s, target)); // in a circle
        QVERIFY(!store());
        QFile::remove(path);
        QVERIFY(QFile::link(u"nowhere/settings.json"_s, path));
        QVERIFY(!store() && !QFile::exists(folder_.filePath(u"nowhere"_s)));
        QFile::remove(path);
        QVERIFY(QDir().mkdir(path));
        QVERIFY(!store());
        QVERIFY(QDir().rmdir(path));
        QFile::remove(target);
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
