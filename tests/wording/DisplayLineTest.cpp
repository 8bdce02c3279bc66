#include "wording/DisplayLine.h"
#include "support/Row.h"
#include "wording/TextRules.h"

using namespace Qt::StringLiterals;
using namespace quorbit;
using namespace quorbit::test;

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
                                                 {u" \u00A0\u3000\u2800\u3164\u115F"_s, {}},
                                                 {u"\u200D\uFE0F\u0301\u0488\U000E0041"_s, {}},
                                                 {u"\u3164\uE000"_s, u"\u3164\uE000"_s},
                                                 {u"שלום"_s, u"\u2068שלום\u2069"_s},
                                                 {u"a مرحبا b"_s, u"\u2068a مرحبا b\u2069"_s},
                                                 {u"א\u2069b\u2069"_s, u"\u2068אb\u2069"_s}};
        for (const auto &[text, line] : rows) {
            const Row row(text.toUtf8());
            QCOMPARE(displayLine(text), line);
        }
        QCOMPARE(displayLine(u"a"_s + QChar(0xD83D) + u"b"_s + QChar(0xDE00)), u"a\uFFFDb\uFFFD"_s);
    }

    void longTextsKeepBothEnds() {
        const QString longText = u"begin"_s + QString(1'000'000, u'x') + u"end"_s;
        const QString line = displayLine(longText);
        QVERIFY(line.size() <= 601);
        QVERIFY(line.startsWith("begin"_L1) && line.endsWith("end"_L1) && line.contains(u'…'));
    }

    void longTextsAreCutBetweenCharacters() {
        for (const QString &character :
             {u"😀"_s, u"👨‍👩‍👧‍👦"_s, u"🇩🇪"_s, u"e\u0301\u0327"_s}) {
            for (int before = 0; before < character.size(); ++before) {
                const QString text = QString(before, u'x') + character.repeated(2500) + QString(before, u'x');
                for (QString &shown : std::array{displayLine(text), displayText(text)}) {
                    QVERIFY(shown.size() > 500 && shown.size() <= 4001);
                    QCOMPARE(shown.remove(character).remove(u'x'), u"…"_s);
                }
                QString head = firstCharacters(u"y"_s + text, before + 3).sliced(before + 1);
                QCOMPARE(head, character.repeated(2));
            }
        }
        // However many marks a letter has, it is one character.
        const QString crowded = u"e"_s + QString(10'000, QChar(0x301));
        QCOMPARE(firstCharacters(u"a"_s + crowded, 2), u"a"_s);
        QCOMPARE(displayLine(u"a"_s + crowded + u'b'), u"a…b"_s);
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
#include "DisplayLineTest.moc"
