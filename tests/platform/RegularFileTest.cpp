#include "platform/RegularFile.h"
#include "support/Row.h"

#include <QFile>
#include <QTemporaryDir>

#include <sys/stat.h>

using namespace Qt::StringLiterals;
using namespace quorbit;
using namespace quorbit::test;

class RegularFileTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    /// None of them holds the program up, least of all a pipe to which nobody writes.
    void readsRegularFilesAlone() {
        const QTemporaryDir folder;
        const auto path = [&folder](const QString &name) { return folder.filePath(name); };
        for (const QByteArray contents : {"", "ten bytes.", "11 bytes..."}) {
            QFile file(path(QString::number(contents.size())));
            QVERIFY(file.open(QFile::WriteOnly) && file.write(contents) == contents.size());
        }
        QVERIFY(QFile::link(u"10"_s, path(u"link"_s)));
        QVERIFY(QFile::link(u"nowhere"_s, path(u"dangling"_s)));
        QCOMPARE(::mkfifo(QFile::encodeName(path(u"pipe"_s)).constData(), 0600), 0);
        const std::pair<QString, std::optional<QByteArray>> rows[]{
            {path(u"0"_s), ""},        {path(u"10"_s), "ten bytes."},
            {path(u"11"_s), {}},       {path(u"link"_s), "ten bytes."},
            {path(u"dangling"_s), {}}, {path(u"nothing"_s), {}},
            {path(u"pipe"_s), {}},     {folder.path(), {}},
            {u"/dev/null"_s, {}},      {u"/dev/zero"_s, {}}};
        for (const auto &[file, contents] : rows) {
            const Row row(file.toUtf8());
            QCOMPARE(readRegularFile(file, 10), contents);
        }
    }
};

QTEST_GUILESS_MAIN(RegularFileTest)
#include "RegularFileTest.moc"
