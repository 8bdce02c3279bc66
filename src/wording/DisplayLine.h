#pragma once

#include <QString>

namespace quorbit {

// What comes from other computers, from the service or from the release server is shown only by way of these
// three, and each such text by exactly one of them, before it becomes a part of a sentence of ours.

/// A text from outside, made fit to stand in one line among others: line ends and control characters become
/// spaces, what cannot be seen (direction switches, spaces without width) is left out, writing that runs
/// right to left is kept from reordering its surroundings, and of a very long text the middle is left out, so
/// that no row lays out more than about 600 characters. An ordinary text comes back as it is, and one in
/// which there is nothing to see comes back empty.
QString displayLine(const QString &text);

/// The same for the name of a computer, which is never empty: one without anything to see is "Unnamed".
QString displayName(const QString &name);

/// The same for a text that may have lines, such as release notes: each of them is fit to be shown, no two
/// empty ones follow each other, and of a text that would take over the window the rest is left out.
QString displayText(const QString &text);

} // namespace quorbit
