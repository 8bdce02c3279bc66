#include "wording/DisplayLine.h"

#include <QTest>

using namespace Qt::StringLiterals;
using quorbit::displayLine;
using quorbit::displayText;

class DisplayLineTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void textsBecomeOneLine() {
        const std::pair<QString, QString> rows[]{{{}, {}},
                                                 {u"<b>a</b> &amp; b"_s, u"<b>a</b> &amp; b"_s},
                                                 {u"👩\u200D💻"_s, u"👩\u200D💻"_s},
                                                 {u"a\r\nb\nc\u2028d\u2029e\u0085f"_s, u"a b c d e f"_s},
                                                 {u"\n\t text\r\n"_s, u" text"_s},
                                                 {u"a\t\tb\u0000c\u001B\u007Fd\u009Fe"_s, u"a b c d e"_s},
                                                 {u"invoice\u202Efdp.exe"_s, u"invoicefdp.exe"_s},
                                                 {u"\u202Aa\u202C\u2067b\u2069\u2066\u2068"_s, u"ab"_s},
                                                 {u"\uFEFFa\u200Bb\u00ADc\u200E\u2060\uFFF9"_s, u"abc"_s},
                                                 {u"\u200B\n\u2066"_s, {}},
                                                 {u"שלום"_s, u"\u2068שלום\u2069"_s},
                                                 {u"a مرحبا b"_s, u"\u2068a مرحبا b\u2069"_s},
                                                 {u"א\u2069b\u2069"_s, u"\u2068אb\u2069"_s}};
        for (const auto &[text, line] : rows)
            QCOMPARE(displayLine(text), line);
        QCOMPARE(displayLine(u"a"_s + QChar(0xD83D) + u"b"_s + QChar(0xDE00)), u"a\uFFFDb\uFFFD"_s);
    }

    void longTextsKeepBothEnds() {
        const QString longText = u"begin"_s + QString(1'000'000, u'x') + u"end"_s;
        const QString line = displayLine(longText);
        QVERIFY(line.size() <= 601);
        QVERIFY(line.startsWith("begin"_L1) && line.endsWith("end"_L1) && line.contains(u'…'));
        // No cut between the halves of a character, wherever the cut falls.
        for (const int before : {0, 1}) {
            const QString emoji = QString(before, u'x') + u"😀"_s.repeated(1000) + QString(before, u'x');
            QVERIFY(!displayLine(emoji).contains(QChar::ReplacementCharacter));
        }
    }

    void linesStayLines() {
        QCOMPARE(displayText(u"\n\u202Ea\tb\r\n\u200B\n\n <i>c</i>\u2028d\n \n"_s), u"a b\n\n <i>c</i>\nd"_s);
        for (const QString &endless : {QString(1'000'000, u'x'), u"x\n"_s.repeated(1'000'000)}) {
            const QString text = displayText(endless);
            QVERIFY(text.endsWith(u'…') && text.size() <= 4001 && text.count(u'\n') < 60);
        }
    }
};

QTEST_GUILESS_MAIN(DisplayLineTest)
#include "display_line_test.moc"
