#pragma once

#include <QString>

namespace quorbit {

/// What a screen reader reads a text by. A word includes the spaces and the punctuation after it (wordStart)
/// or before it (wordEnd). No text that is told has more than one line.
enum class TextUnit { character, wordStart, wordEnd, sentence, line };

/// In UTF-16 units; neither end stands within a character.
struct TextPiece {
    int start = 0;
    int end = 0;
};

/// The unit at `offset`, which is between 0 and the text's length. A cursor at the end stands at the last
/// unit, but behind the last character.
TextPiece pieceAt(const QString &text, int offset, TextUnit unit);
/// The unit before or after the one at `offset`; an empty one at the text's start or end if there is none.
TextPiece pieceBefore(const QString &text, int offset, TextUnit unit);
TextPiece pieceAfter(const QString &text, int offset, TextUnit unit);

} // namespace quorbit
