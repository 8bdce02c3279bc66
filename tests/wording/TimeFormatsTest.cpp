#include "wording/TimeFormats.h"

#include <QTest>

using namespace quorbit;
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
        const std::tuple<qint64, QString, QString> rows[]{
            {second - 1, u"now"_s, u"现在"_s},
            {second, u"1 sec. ago"_s, u"1秒前"_s},
            {minute - 1, u"59 sec. ago"_s, u"59秒前"_s},
            {2 * minute, u"2 min. ago"_s, u"2分钟前"_s},
            {hour - 1, u"59 min. ago"_s, u"59分钟前"_s},
            {day, u"1 day ago"_s, u"1天前"_s},
            {7 * day, u"1 wk. ago"_s, u"1周前"_s},
            {31 * day - 1, u"4 wk. ago"_s, u"4周前"_s},
            {31 * day, u"1 mo. ago"_s, u"1个月前"_s},
            {365 * day - 1, u"11 mo. ago"_s, u"11个月前"_s},
            {365 * day, u"1 yr. ago"_s, u"1年前"_s},
            {-90 * second, u"in 1 min."_s, u"1分钟后"_s},
            {now - std::numeric_limits<qint64>::max(), u"in 7,973 yr."_s, u"7,973年后"_s}};
        for (const auto &[ago, english, chinese] : rows) {
            QCOMPARE(TimeFormats(QLocale(u"en_US"_s)).relative(now - ago, now), english);
            QCOMPARE(TimeFormats(QLocale(u"zh_Hans_CN"_s)).relative(now - ago, now), chinese);
        }
    }

    void saysHowLongTheyHold() {
        const TimeFormats formats{QLocale(u"en"_s)};
        qint64 then = now;
        // Ages of ever more than the one before, up to some years.
        for (qint64 age = 1; age < 1500 * day; age += age / 7 + 1) {
            for (const qint64 sign : {1, -1}) {
                then = now - sign * age;
                const qint64 holds = TimeFormats::relativeHoldsFor(then, now).count();
                QVERIFY(holds > 0);
                QCOMPARE(formats.relative(then, now + holds - 1), formats.relative(then, now));
            }
        }
        for (const qint64 age : {5 * second, 59 * second, 3 * minute + 1, 59 * minute, 23 * hour + 7}) {
            for (const qint64 sign : {1, -1}) {
                then = now - sign * age;
                const qint64 holds = TimeFormats::relativeHoldsFor(then, now).count();
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
        QCOMPARE(TimeFormats(QLocale::c()).relative(now - day, now), u"1 day ago"_s);
    }
};

QTEST_APPLESS_MAIN(TimeFormatsTest)
#include "TimeFormatsTest.moc"
