#pragma once

#include <QColor>
#include <QRectF>

class QPainter;

namespace quorbit {

/// Paints a rounded rectangle with an edge of `width` pixels drawn inside it; both colours may be
/// transparent.
void paintFrame(QPainter &painter, const QRectF &rect, double radius, const QColor &fill, const QColor &edge,
                double width = 1);

} // namespace quorbit
