#pragma once

namespace quorbit {

class HistoryList;

/// Lets screen readers see every HistoryList as a list of items that can be pressed.
void installHistoryListAccessibility();
/// Tells screen readers that the keyboard is at the current row of `list`.
void announceCurrentRow(HistoryList &list);

} // namespace quorbit
