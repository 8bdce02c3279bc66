#include <QDirIterator>
#include <QFile>
#include <QMap>
#include <QRegularExpression>
#include <QTest>
#include <QXmlStreamReader>

using namespace Qt::StringLiterals;

namespace {

using Table = QMap<QString, QString>;

// The keys by their first component: what the views may ask for, and nothing else. A percent sign follows
// those whose text holds a value.
constexpr const char *keyGroups[] = {
    "about: features language.en language.label language.restart_needed language.system "
    "language.system_hint language.zh restart_now section.language section.updates tagline version%",
    "common: app_name cancel dash loading more% unnamed",
    "devices: add add.connect.failed add.connect.hint add.connect.host add.connect.pin "
    "add.connect.submit add.done add.mode.connect add.mode.show add.show.generate add.show.hint "
    "add.show.paired add.show.waiting add.title empty.hint empty.title footer.hint fp lastseen offline "
    "online unbind unpair.confirm unpair.message% unpair.title",
    "kvm: accessibility.granted accessibility.granted_desc accessibility.needs_restart "
    "accessibility.needs_restart_desc accessibility.not_granted accessibility.not_granted_desc "
    "behavior.footer canvas.drag_arrange canvas.local canvas.no_peer canvas.offline canvas.online "
    "canvas.place.above% canvas.place.below% canvas.place.left_of% canvas.place.right_of% "
    "canvas.place.same_place% canvas.tap_master corner_size corner_size.off enable grant "
    "master.linux_hotkey master.local_footer master.none master.peer_global% restart_helper restart_hint "
    "section.accessibility section.behavior section.layout section.toggle sensitivity sensitivity.auto "
    "status.controlled% status.master_off% status.need_ax status.no_master status.ready status.waiting "
    "swap_modifiers switch_delay switch_delay.off tip.edge_switch tip.escape_hotkey tip.lock_hotkey "
    "tip.mdns tip.reverse",
    "menu: connected daemon_disconnected history_header no_devices pause_sync quit settings "
    "status.connected status.disconnected status.paused status.starting update_badge_tooltip% "
    "waiting_peer",
    "overview: device_id device_name peers.empty port section.activity section.local section.peers "
    "status status.paused status.running",
    "sync: file_cap.footer file_cap.label file_cap.unit history.clear history.footer history.hint "
    "history.no_match history.search section.history section.transfer section.types type.files "
    "type.image type.text",
    "tab: about devices kvm overview sync",
    "update: available.subtitle% available.title% button.check button.download checking downloaded "
    "downloading failed failed.network failed.parse failed.server last_checked% never_checked "
    "open_browser uptodate%"};

/// Every key, and whether its text holds a value.
QMap<QString, bool> knownKeys() {
    QMap<QString, bool> keys;
    for (const char *group : keyGroups) {
        QStringList words = QString::fromLatin1(group).split(u' ');
        const QString first = words.takeFirst().chopped(1) + u'.';
        for (const QString &word : words)
            keys.insert(first + QString(word).remove(u'%'), word.endsWith(u'%'));
    }
    return keys;
}

// What the table's file says; a key that stands in it twice is reported.
Table readTable(const QString &language) {
    QFile file(QLatin1String(SOURCES "/app/translations/quorbit_%1.ts").arg(language));
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

} // namespace

class TestTranslations : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void bothTablesHoldEveryKeyAndNoOther() {
        const auto keys = knownKeys();
        for (const Table &table : {english_, chinese_}) {
            QCOMPARE(table.keys(), keys.keys());
            for (auto entry = table.begin(); entry != table.end(); ++entry) {
                QVERIFY2(!entry->isEmpty() && *entry != entry.key(), qPrintable(entry.key()));
                QCOMPARE(*entry, entry->trimmed());
                // Placeholders are where a value is filled in.
                QVERIFY2(entry->count(u'%') == (keys.value(entry.key()) ? 1 : 0), qPrintable(entry.key()));
                QVERIFY2(entry->count(u"%1"_s) == entry->count(u'%'), qPrintable(entry.key()));
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
        for (const QString &key : knownKeys().keys()) {
            for (const QString &text : {english_.value(key), chinese_.value(key)}) {
                QVERIFY2(!otherSystems.match(text).hasMatch(), qPrintable(text));
                // Hotkeys belong to the service, so no text may promise which keys they are.
                QVERIFY2(!key.contains("hotkey"_L1) || !keyNames.match(text).hasMatch(), qPrintable(text));
                QVERIFY2(!text.contains("..."_L1), qPrintable(text));
            }
            const bool ownName = key == "about.language.zh"_L1;
            QVERIFY2(ownName || !chinese.match(english_.value(key)).hasMatch(), qPrintable(key));
            QVERIFY2(!narrowPunctuation.match(chinese_.value(key)).hasMatch(),
                     qPrintable(chinese_.value(key)));
            QVERIFY2(!noSpace.match(chinese_.value(key)).hasMatch(), qPrintable(chinese_.value(key)));
        }
        for (const Table &table : {english_, chinese_}) {
            QCOMPARE(table.value(u"about.language.en"_s), u"English"_s);
            QCOMPARE(table.value(u"about.language.zh"_s), u"中文"_s);
        }
    }

    void sourcesAskOnlyForKnownKeys() {
        QStringList groups;
        for (const char *group : keyGroups)
            groups << QString::fromLatin1(group).section(u':', 0, 0);
        // Whatever looks like a key counts too: some views keep their keys in tables.
        const QRegularExpression asked(
            u"qtTrId\\(\\s*\"([^\"]*)\"|\"((?:%1)\\.[a-z][a-z_.]*)\""_s.arg(groups.join(u'|')));
        const auto keys = knownKeys();
        int found = 0;
        QDirIterator files(QLatin1String(SOURCES), {u"*.cpp"_s, u"*.h"_s}, QDir::Files,
                           QDirIterator::Subdirectories);
        while (files.hasNext()) {
            QFile file(files.next());
            QVERIFY(file.open(QIODevice::ReadOnly));
            const QString source = QString::fromUtf8(file.readAll());
            for (const auto &match : asked.globalMatch(source)) {
                const QString key = match.hasCaptured(1) ? match.captured(1) : match.captured(2);
                ++found;
                QVERIFY2(keys.contains(key), qPrintable(file.fileName() + u": "_s + key));
            }
        }
        QVERIFY(found > 0);
    }

private:
    const Table english_ = readTable(u"en"_s);
    const Table chinese_ = readTable(u"zh_Hans"_s);
};

QTEST_GUILESS_MAIN(TestTranslations)
#include "test_translations.moc"
