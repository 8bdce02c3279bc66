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

/// A symbol for where nobody tells what is behind it, such as the system tray.
QIcon outlinedSymbolIcon(const QString &name);

/// Every symbol that there is.
QStringList symbolNames();

} // namespace quorbit
