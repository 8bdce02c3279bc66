#include "ui/DisplayLine.h"

#include <QList>

namespace quorbit {

namespace {

constexpr qsizetype keptAtEachEnd = 300; // more than fits in any row
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

bool isDirectionSwitch(char32_t character) {
    return (character >= 0x202A && character <= 0x202E) || (character >= 0x2066 && character <= 0x2069);
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

// Both ends without the line ends and control characters around the text; a pair of surrogates stays whole.
QString ends(QStringView text) {
    while (!text.isEmpty() && isBreak(text.front().unicode()))
        text = text.sliced(1);
    while (!text.isEmpty() && isBreak(text.back().unicode()))
        text.chop(1);
    if (text.size() <= 2 * keptAtEachEnd)
        return text.toString();
    QStringView head = text.first(keptAtEachEnd);
    QStringView tail = text.last(keptAtEachEnd);
    if (head.back().isHighSurrogate())
        head.chop(1);
    if (tail.front().isLowSurrogate())
        tail = tail.sliced(1);
    return head.toString() + u'…' + tail.toString();
}

} // namespace

QString displayLine(const QString &text) {
    const QString kept = ends(text);
    QString line;
    line.reserve(kept.size() + 2);
    bool afterBreak = false;
    bool needsIsolation = false;
    for (const char32_t character : kept.toUcs4()) {
        if (isDirectionSwitch(character))
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

} // namespace quorbit
