#include "wording/TimeFormats.h"
#include "support/Row.h"

using namespace quorbit;
using namespace quorbit::test;
using namespace Qt::StringLiterals;

namespace {

constexpr qint64 second = 1000;
constexpr qint64 minute = 60 * second;
constexpr qint64 hour = 60 * minute;
constexpr qint64 day = 24 * hour;

const qint64 now = QDateTime(QDate(2026, 11, 22), QTime(9, 41), Qt::UTC).toMSecsSinceEpoch();

} // namespace

class TimeFormatsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void writesRelativeTimes() {
        const TimeFormats formats{QLocale(u"en_US"_s)};
        const std::pair<qint64, QString> rows[]{
            {second - 1, u"now"_s},           {minute - 1, u"59 sec. ago"_s},
            {hour - 1, u"59 min. ago"_s},     {day - 1, u"23 hr. ago"_s},
            {7 * day - 1, u"6 days ago"_s},   {31 * day - 1, u"4 wk. ago"_s},
            {365 * day - 1, u"11 mo. ago"_s}, {365 * day, u"1 yr. ago"_s},
            {-90 * second, u"in 1 min."_s},   {now - std::numeric_limits<qint64>::max(), u"in 7,973 yr."_s}};
        for (const auto &[ago, text] : rows) {
            const Row row(text.toUtf8());
            QCOMPARE(formats.relative(now - ago, now), text);
        }
        QCOMPARE(TimeFormats(QLocale(u"zh_Hans_CN"_s)).relative(now - 2 * minute, now), u"2分钟前"_s);
        QCOMPARE(TimeFormats(QLocale::c()).relative(now - day, now), u"1 day ago"_s);
    }

    void saysHowLongTheyHold() {
        const TimeFormats formats{QLocale(u"en"_s)};
        // Ages of ever more than the one before, up to some years.
        for (qint64 age = 1; age < 1500 * day; age += age / 7 + 1) {
            for (const qint64 then : {now - age, now + age}) {
                const Row row(QByteArray::number(now - then) + " ms ago");
                const qint64 holds = TimeFormats::relativeHoldsFor(then, now).count();
                QVERIFY(holds > 0);
                QCOMPARE(formats.relative(then, now + holds - 1), formats.relative(then, now));
                if (age > second && age < 23 * hour) // What is older is looked at every day.
                    QVERIFY(formats.relative(then, now + holds) != formats.relative(then, now));
            }
        }
    }

    void writesDates() {
        const QDateTime when(QDate(2026, 11, 22), QTime(9, 41, 59));
        QCOMPARE(TimeFormats(QLocale(u"en_GB"_s)).dateTime(when.toUTC()), u"22 Nov 2026, 09:41"_s);
        QCOMPARE(TimeFormats(QLocale(u"en_US"_s)).dateTime(when).replace(QChar::Nbsp, u' '),
                 u"Nov 22, 2026, 9:41 AM"_s);
        QCOMPARE(TimeFormats(QLocale(u"zh_Hans_CN"_s)).dateTime(when), u"2026年11月22日 09:41"_s);
    }
};

QTEST_APPLESS_MAIN(TimeFormatsTest)
#include "TimeFormatsTest.moc"
