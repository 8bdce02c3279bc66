#pragma once

#include <QString>

#include <cstddef>

namespace quorbit {

/// `text` without the tabs and space separators of any script at its ends; line breaks stay.
QString trimmedSpaces(const QString &text);

/// Whether a text has nothing that a reader sees: it is empty, or of spaces, line ends, control and
/// formatting characters, fillers and marks without a letter alone.
bool isBlank(const QString &text);

// Cut as a reader counts characters: no accent is parted from its letter, no emoji and no flag is halved.

/// The first `count` characters.
QString firstCharacters(const QString &text, int count);
/// The characters that the first, or the last, `units` UTF-16 units hold whole.
QString firstUnits(QStringView text, qsizetype units);
QString lastUnits(QStringView text, qsizetype units);

/// What a list that ends before its values do says of the rest; empty when nothing is left out.
QString moreNotShown(std::size_t count);

} // namespace quorbit
