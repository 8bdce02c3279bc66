#include "wording/DisplayLine.h"

#include "wording/TextRules.h"

#include <QCoreApplication>
#include <QList>
#include <QRegularExpression>
#include <QStringList>

#include <algorithm>
#include <iterator>
#include <utility>

using namespace Qt::StringLiterals;

namespace quorbit {

namespace {

constexpr qsizetype keptAtEachEnd = 300; // more than fits in any row
constexpr qsizetype longestText = 4000;  // units and lines; more than any release has to say
constexpr qsizetype mostLines = 60;
constexpr QChar firstStrongIsolate(0x2068);
constexpr QChar popDirectionalIsolate(0x2069);

bool isBreak(char32_t character) {
    switch (QChar::category(character)) {
    case QChar::Other_Control:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return true;
    default:
        return false;
    }
}

/// Characters that only steer how others are shown. The joiners stay, without which neither emoji nor many of
/// Asia's scripts can be written, and so do those that are drawn, such as the Arabic number sign.
bool isInvisible(char32_t character) {
    constexpr std::pair<char32_t, char32_t> ranges[]{{0xAD, 0xAD},     {0x61C, 0x61C},   {0x180E, 0x180E},
                                                     {0x200B, 0x200B}, {0x200E, 0x200F}, {0x202A, 0x202E},
                                                     {0x2060, 0x206F}, {0xFEFF, 0xFEFF}, {0xFFF9, 0xFFFB}};
    return std::any_of(std::begin(ranges), std::end(ranges), [character](const auto &range) {
        return character >= range.first && character <= range.second;
    });
}

bool runsRightToLeft(char32_t character) {
    switch (QChar::direction(character)) {
    case QChar::DirR:
    case QChar::DirAL:
    case QChar::DirAN:
        return true;
    default:
        return false;
    }
}

// Both ends of the text without what shows nothing around it.
QString ends(QStringView text) {
    const auto showsNothing = [](QChar unit) {
        return isBreak(unit.unicode()) || isInvisible(unit.unicode());
    };
    while (!text.isEmpty() && showsNothing(text.front()))
        text = text.sliced(1);
    while (!text.isEmpty() && showsNothing(text.back()))
        text.chop(1);
    if (text.size() <= 2 * keptAtEachEnd)
        return text.toString();
    return firstUnits(text, keptAtEachEnd) + u'…' + lastUnits(text, keptAtEachEnd);
}

QString cleanLine(const QString &text) {
    QString line;
    line.reserve(text.size() + 2);
    bool afterBreak = false;
    bool needsIsolation = false;
    if (isBlank(text))
        return line;
    for (const char32_t character : text.toUcs4()) {
        if (isInvisible(character))
            continue;
        if (!isBreak(character))
            line += QChar::fromUcs4(character);
        else if (!afterBreak)
            line += u' ';
        afterBreak = isBreak(character);
        needsIsolation = needsIsolation || runsRightToLeft(character);
    }
    if (needsIsolation)
        return firstStrongIsolate + line + popDirectionalIsolate;
    return line;
}

} // namespace

QString displayLine(const QString &text) {
    return cleanLine(ends(text));
}

QString displayName(const QString &name) {
    const QString line = displayLine(name);
    return line.isEmpty() ? qtTrId("common.unnamed") : line;
}

QString displayText(const QString &text) {
    static const QRegularExpression lineEnd(u"\r\n|[\n\v\f\r\u0085\u2028\u2029]"_s);
    QStringList lines;
    for (const QString &each : firstUnits(text, longestText).split(lineEnd)) {
        const QString line = cleanLine(each);
        if (!line.isEmpty() || (!lines.isEmpty() && !lines.back().isEmpty()))
            lines << line;
    }
    const bool isCut = text.size() > longestText || lines.size() > mostLines;
    lines = lines.first(std::min(lines.size(), mostLines));
    if (!lines.isEmpty() && lines.back().isEmpty())
        lines.removeLast();
    return lines.join(u'\n') + (isCut ? u"…"_s : QString());
}

} // namespace quorbit
