#pragma once

#include <QColor>
#include <QIcon>
#include <QPalette>
#include <QStringList>
#include <QStringView>

class QPainter;
class QRectF;

namespace quorbit {

/// Paints the symbol called `name` (by its SF Symbols name) as large as fits into the middle of `rect`. An
/// unknown name shows an empty circle.
void paintSymbol(QPainter &painter, const QRectF &rect, QStringView name, const QColor &color);

/// A symbol in white with a dark outline, which shows on any background: no tray host tells its colour.
QIcon outlinedSymbolIcon(const QString &name);

/// Every symbol that there is.
QStringList symbolNames();

} // namespace quorbit
