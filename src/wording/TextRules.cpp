#include "wording/TextRules.h"

#include <QCoreApplication>
#include <QTextBoundaryFinder>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace quorbit {

namespace {

bool isHorizontalSpace(QChar c) {
    return c == QLatin1Char('\t') || c.category() == QChar::Separator_Space;
}

} // namespace

QString trimmedSpaces(const QString &text) {
    const auto begin = std::find_if_not(text.begin(), text.end(), isHorizontalSpace);
    const auto end = std::find_if_not(text.rbegin(), std::make_reverse_iterator(begin), isHorizontalSpace);
    return text.sliced(begin - text.begin(), end.base() - begin);
}

QString firstCharacters(const QString &text, int count) {
    // A character may be long, but not so long that all of a huge text has to be looked at.
    constexpr qsizetype mostUnitsPerCharacter = 32;
    QString head = text.first(std::min(text.size(), count * mostUnitsPerCharacter));
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, head);
    for (int taken = 0; taken < count; ++taken) {
        if (finder.toNextBoundary() < 0)
            return head;
    }
    return head.first(finder.position());
}

QString moreNotShown(std::size_t count) {
    return count == 0 ? QString() : qtTrId("common.more").arg(count);
}

QString spokenEntry(const QString &preview, const QString &source) {
    if (preview.isEmpty() && source.isEmpty())
        return qtTrId("common.unnamed");
    return preview.isEmpty() || source.isEmpty() ? preview + source : preview + u", "_s + source;
}

} // namespace quorbit
