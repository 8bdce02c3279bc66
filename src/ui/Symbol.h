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

/// A symbol for menus and the system tray, sharp at every size. `disabled` is used where it cannot be chosen.
QIcon symbolIcon(const QString &name, const QColor &color, const QColor &disabled = {});

/// Every symbol that there is.
QStringList symbolNames();

} // namespace quorbit
