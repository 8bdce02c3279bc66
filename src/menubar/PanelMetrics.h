#pragma once

#include <QMargins>

class QHBoxLayout;
class QString;
class QWidget;

/// The panel's measures, in pixels at 96 dpi, and what its rows have in common.
namespace quorbit {

class SymbolLabel;
class TextLabel;

namespace panel {

constexpr int width = 320;
constexpr int outerInset = 8;
constexpr int sideInset = 16;
constexpr int rowInset = 4;
constexpr int pauseInset = 6;
constexpr int footerInset = 5;
constexpr int columnSpacing = 8;

/// The layout of a row over the panel's whole width, `inset` from its upper and lower edge.
QHBoxLayout *rowLayout(QWidget *row, int inset);
/// The symbol before a row's text, in the column that all rows share.
SymbolLabel *columnSymbol(const QString &symbol);
/// Lets a text of any length have what the rest of its row leaves.
void takeRemainingWidth(TextLabel *text);

} // namespace panel
} // namespace quorbit
