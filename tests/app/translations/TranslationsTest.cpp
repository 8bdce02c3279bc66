#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QMap>
#include <QRegularExpression>
#include <QSet>
#include <QTest>
#include <QXmlStreamReader>

using namespace Qt::StringLiterals;

namespace {

using Table = QMap<QString, QString>;

// What the table's file says; a key that stands in it twice is reported.
Table readTable(const QString &name) {
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("cannot read %s", qPrintable(file.fileName()));
    Table table;
    QString key;
    for (QXmlStreamReader xml(&file); !xml.atEnd();) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (xml.name() == "message"_L1)
            key = xml.attributes().value("id"_L1).toString();
        if (xml.name() != "translation"_L1)
            continue;
        if (table.contains(key))
            qFatal("%s stands twice in %s", qPrintable(key), qPrintable(file.fileName()));
        table.insert(key, xml.readElementText());
    }
    return table;
}

/// What the sources ask for. Whatever looks like a key counts: some views keep their keys in tables.
QSet<QString> keysInSources(const Table &table) {
    QSet<QString> groups;
    for (const QString &key : table.keys())
        groups.insert(key.section(u'.', 0, 0));
    const QRegularExpression asked(
        u"qtTrId\\(\\s*\"([^\"]*)\"|\"((?:%1)\\.[a-z][a-z_.]*)\""_s.arg(groups.values().join(u'|')));
    QSet<QString> keys;
    QDirIterator files(QLatin1String(SOURCES), {u"*.cpp"_s, u"*.h"_s}, QDir::Files,
                       QDirIterator::Subdirectories);
    while (files.hasNext()) {
        QFile file(files.next());
        if (!file.open(QIODevice::ReadOnly))
            qFatal("cannot read %s", qPrintable(file.fileName()));
        const QString source = QString::fromUtf8(file.readAll());
        for (const auto &match : asked.globalMatch(source))
            keys.insert(match.hasCaptured(1) ? match.captured(1) : match.captured(2));
    }
    return keys;
}

} // namespace

class TranslationsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() {
        const QDir folder(QLatin1String(SOURCES "/app/translations"));
        for (const QFileInfo &file : folder.entryInfoList({u"quorbit_*.ts"_s}))
            tables_.insert(file.baseName().remove("quorbit_"_L1), readTable(file.filePath()));
        QVERIFY(tables_.contains(u"en"_s) && tables_.contains(u"zh_Hans"_s));
    }

    void tablesHoldWhatTheSourcesAskForAndNoMore() {
        const Table &english = tables_[u"en"_s];
        QStringList asked = keysInSources(english).values();
        asked.sort();
        for (const Table &table : tables_) {
            QCOMPARE(table.keys(), asked);
            for (const QString &key : asked) {
                const QString text = table.value(key);
                QVERIFY2(!text.isEmpty() && text != key && text == text.trimmed(), qPrintable(key));
                // The only placeholder is one that stands for a value, in every language.
                QVERIFY2(text.count(u'%') == text.count(u"%1"_s), qPrintable(text));
                QVERIFY2(text.count(u'%') <= 1 && text.count(u'%') == english.value(key).count(u'%'),
                         qPrintable(key));
            }
        }
    }

    void textsKeepTheHouseStyle() {
        const QRegularExpression otherSystems(u"\\bMac\\b|macOS|System Settings|Finder|访达"_s);
        const QRegularExpression keyNames(
            u"Ctrl|Control|Alt\\b|Shift|Esc\\b|Cmd|Command|Super|[⌘⌥⌃⇧⎋]|F\\d"_s);
        const QRegularExpression chinese(u"\\p{sc:Han}"_s, QRegularExpression::UseUnicodePropertiesOption);
        const QRegularExpression narrowPunctuation(u"\\p{sc:Han}[,.:;?!()\"']|[,:;?!()\"']\\p{sc:Han}"_s);
        const QRegularExpression noSpace(u"\\p{sc:Han}[A-Za-z0-9%⌘]|[A-Za-z0-9⌘]\\p{sc:Han}"_s);
        for (auto table = tables_.cbegin(); table != tables_.cend(); ++table) {
            for (auto entry = table->cbegin(); entry != table->cend(); ++entry) {
                const QString &text = entry.value();
                QVERIFY2(!otherSystems.match(text).hasMatch(), qPrintable(text));
                // Hotkeys belong to the service, so no text may promise which keys they are.
                const bool isHotkey = entry.key().contains("hotkey"_L1);
                QVERIFY2(!isHotkey || !keyNames.match(text).hasMatch(), qPrintable(text));
                QVERIFY2(!text.contains("..."_L1), qPrintable(text));
                const bool mayBeChinese =
                    table.key() == "zh_Hans"_L1 || entry.key() == "about.language.zh"_L1;
                QVERIFY2(mayBeChinese || !chinese.match(text).hasMatch(), qPrintable(text));
                QVERIFY2(!narrowPunctuation.match(text).hasMatch(), qPrintable(text));
                QVERIFY2(!noSpace.match(text).hasMatch(), qPrintable(text));
            }
            QCOMPARE(table->value(u"about.language.en"_s), u"English"_s);
            QCOMPARE(table->value(u"about.language.zh"_s), u"中文"_s);
        }
    }

private:
    QMap<QString, Table> tables_; ///< by language
};

QTEST_GUILESS_MAIN(TranslationsTest)
#include "TranslationsTest.moc"
