#include "wording/TimeFormats.h"

#include <unicode/udat.h>
#include <unicode/uloc.h>
#include <unicode/ureldatefmt.h>

#include <algorithm>
#include <array>

namespace quorbit {

namespace {

constexpr qint64 second = 1000;
constexpr qint64 minute = 60 * second;
constexpr qint64 hour = 60 * minute;
constexpr qint64 day = 24 * hour;
constexpr qint64 week = 7 * day;

// The years 1 and 9999: calendars, and whoever reads them, make nothing of what lies beyond.
constexpr qint64 earliest = -62135596800000;
constexpr qint64 latest = 253402300799000;

struct Span {
    qint64 count = 0;
    URelativeDateTimeUnit unit = UDAT_REL_UNIT_SECOND;
};

/// Whole months of the calendar between two moments; they pass at a whole number of days.
qint64 monthsBetween(qint64 from, qint64 to) {
    const QDateTime begin = QDateTime::fromMSecsSinceEpoch(from, Qt::UTC);
    const QDateTime end = QDateTime::fromMSecsSinceEpoch(to, Qt::UTC);
    const int months =
        (end.date().year() - begin.date().year()) * 12 + end.date().month() - begin.date().month();
    return begin.addMonths(months) > end ? months - 1 : months;
}

/// The time between two moments in order.
Span spanBetween(qint64 from, qint64 to) {
    const qint64 age = to - from;
    if (age < minute)
        return {age / second, UDAT_REL_UNIT_SECOND};
    if (age < hour)
        return {age / minute, UDAT_REL_UNIT_MINUTE};
    if (age < day)
        return {age / hour, UDAT_REL_UNIT_HOUR};
    if (age < week)
        return {age / day, UDAT_REL_UNIT_DAY};
    const qint64 months = monthsBetween(from, to);
    if (months < 1)
        return {age / week, UDAT_REL_UNIT_WEEK};
    if (months < 12)
        return {months, UDAT_REL_UNIT_MONTH};
    return {months / 12, UDAT_REL_UNIT_YEAR};
}

qint64 inCalendar(qint64 moment) {
    return std::clamp(moment, earliest, latest);
}

/// Calls an ICU function that writes into a buffer; nothing is written when it fails.
template <typename Write>
QString written(Write write) {
    std::array<UChar, 128> buffer{};
    UErrorCode error = U_ZERO_ERROR;
    const int32_t length = write(buffer.data(), static_cast<int32_t>(buffer.size()), &error);
    if (U_FAILURE(error))
        return {};
    // Few fonts have the narrow space that sets off "AM".
    return QString::fromUtf16(buffer.data(), length).replace(QChar(0x202F), QChar(QChar::Nbsp));
}

} // namespace

struct TimeFormats::Formatters {
    struct Close {
        void operator()(URelativeDateTimeFormatter *formatter) const { ureldatefmt_close(formatter); }
        void operator()(UDateFormat *formatter) const { udat_close(formatter); }
    };

    explicit Formatters(const QByteArray &languageTag) {
        std::array<char, ULOC_FULLNAME_CAPACITY> id{};
        UErrorCode error = U_ZERO_ERROR;
        uloc_forLanguageTag(languageTag.constData(), id.data(), static_cast<int32_t>(id.size()), nullptr,
                            &error);
        error = U_ZERO_ERROR;
        relative.reset(
            ureldatefmt_open(id.data(), nullptr, UDAT_STYLE_SHORT, UDISPCTX_CAPITALIZATION_NONE, &error));
        error = U_ZERO_ERROR;
        // In UTC, because dateTime() has Qt convert to local time; ICU's time zones may differ from Qt's.
        date.reset(udat_open(UDAT_SHORT, UDAT_MEDIUM, id.data(), u"UTC", -1, nullptr, 0, &error));
    }

    std::unique_ptr<URelativeDateTimeFormatter, Close> relative;
    std::unique_ptr<UDateFormat, Close> date;
};

TimeFormats::TimeFormats(const QLocale &locale)
    : formatters_(std::make_unique<Formatters>(locale.bcp47Name().toLatin1())) {}

TimeFormats::~TimeFormats() = default;

QString TimeFormats::relative(qint64 then, qint64 now) const {
    then = inCalendar(then);
    now = inCalendar(now);
    const bool isPast = then <= now;
    const Span span = spanBetween(std::min(then, now), std::max(then, now));
    return written([&](UChar *to, int32_t capacity, UErrorCode *error) {
        const auto offset = static_cast<double>(isPast ? -span.count : span.count);
        const auto format = span.count == 0 ? ureldatefmt_format : ureldatefmt_formatNumeric;
        return format(formatters_->relative.get(), offset, span.unit, to, capacity, error);
    });
}

std::chrono::milliseconds TimeFormats::relativeHoldsFor(qint64 then, qint64 now) {
    then = inCalendar(then);
    now = inCalendar(now);
    const qint64 distance = std::abs(now - then);
    // Weeks, months and years all pass at a whole number of days.
    qint64 step = day;
    if (distance < minute)
        step = second;
    else if (distance < hour)
        step = minute;
    else if (distance < day)
        step = hour;
    const qint64 rest = distance % step;
    return std::chrono::milliseconds(then <= now ? step - rest : rest + 1);
}

QString TimeFormats::dateTime(const QDateTime &when) const {
    const QDateTime local = when.toLocalTime();
    const QDateTime face(local.date(), local.time(), Qt::UTC);
    return written([&](UChar *to, int32_t capacity, UErrorCode *error) {
        return udat_format(formatters_->date.get(), static_cast<UDate>(face.toMSecsSinceEpoch()), to,
                           capacity, nullptr, error);
    });
}

} // namespace quorbit
