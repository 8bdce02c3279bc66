#pragma once

#include <QString>

namespace quorbit {

/// A text from outside, made fit to stand in one line among others: line ends and control characters become
/// spaces, invisible direction switches are left out, writing that runs right to left is kept from reordering
/// its surroundings, and of a very long text the middle is left out, so that no row lays out more than about
/// 600 characters. An ordinary text comes back as it is.
QString displayLine(const QString &text);

} // namespace quorbit
