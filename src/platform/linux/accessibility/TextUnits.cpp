#include "platform/linux/accessibility/TextUnits.h"

#include <QTextBoundaryFinder>

#include <algorithm>

namespace quorbit {

namespace {

QTextBoundaryFinder::BoundaryType boundaryType(TextUnit unit) {
    switch (unit) {
    case TextUnit::wordStart:
    case TextUnit::wordEnd:
        return QTextBoundaryFinder::Word;
    case TextUnit::sentence:
        return QTextBoundaryFinder::Sentence;
    case TextUnit::character:
    case TextUnit::line:
        break;
    }
    return QTextBoundaryFinder::Grapheme;
}

bool isOfWord(QChar c) {
    return !c.isSpace() && !c.isPunct();
}

/// Whether a unit begins at a boundary, of which there are some around spaces, too.
bool begins(const QString &text, qsizetype at, TextUnit unit) {
    if (unit == TextUnit::wordStart)
        return isOfWord(text[at]);
    return unit != TextUnit::wordEnd || (at > 0 && isOfWord(text[at - 1]));
}

} // namespace

TextPiece pieceAt(const QString &text, int offset, TextUnit unit) {
    const int length = static_cast<int>(text.size());
    if (unit == TextUnit::line)
        return {0, length};
    if (offset == length && unit == TextUnit::character)
        return {length, length};
    const int inside = std::min(offset, length - 1);
    TextPiece piece{0, length};
    QTextBoundaryFinder finder(boundaryType(unit), text);
    for (qsizetype at = 0; at >= 0 && at < length; at = finder.toNextBoundary()) {
        if (!begins(text, at, unit))
            continue;
        (at > inside ? piece.end : piece.start) = static_cast<int>(at);
        if (at > inside)
            break;
    }
    return piece;
}

TextPiece pieceBefore(const QString &text, int offset, TextUnit unit) {
    const TextPiece here = pieceAt(text, offset, unit);
    return here.start == 0 ? TextPiece{} : pieceAt(text, here.start - 1, unit);
}

TextPiece pieceAfter(const QString &text, int offset, TextUnit unit) {
    const TextPiece here = pieceAt(text, offset, unit);
    const int length = static_cast<int>(text.size());
    return here.end == length ? TextPiece{length, length} : pieceAt(text, here.end, unit);
}

} // namespace quorbit
