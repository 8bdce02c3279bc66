#pragma once

#include <QString>

#include <cstddef>

namespace quorbit {

/// `text` without the tabs and space separators of any script at its ends; line breaks stay.
QString trimmedSpaces(const QString &text);

/// The first `count` characters as a reader counts them: no accent is parted from its letter.
QString firstCharacters(const QString &text, int count);

/// What a list that ends before its values do says of the rest; empty when nothing is left out.
QString moreNotShown(std::size_t count);

/// What screen readers call an entry of the clipboard history.
QString spokenEntry(const QString &preview, const QString &source);

} // namespace quorbit
