#pragma once

#include <QDateTime>
#include <QLocale>
#include <QString>

#include <chrono>
#include <memory>

namespace quorbit {

/// Writes times for people, in the words and the order of a locale.
class TimeFormats {
public:
    explicit TimeFormats(const QLocale &locale);
    ~TimeFormats();

    /// How long before or after `now` the moment `then` is, in its largest unit, cut off and short:
    /// "2 min. ago", "in 1 hr.", "now". Both in milliseconds since 1970-01-01 UTC.
    QString relative(qint64 then, qint64 now) const;
    /// After how long relative() may read differently; until then it does not.
    static std::chrono::milliseconds relativeHoldsFor(qint64 then, qint64 now);

    /// The day in medium and the time of day in short style, in this computer's time zone:
    /// "22 Nov 2026, 09:41".
    QString dateTime(const QDateTime &when) const;

private:
    struct Formatters;
    std::unique_ptr<Formatters> formatters_;
};

} // namespace quorbit
