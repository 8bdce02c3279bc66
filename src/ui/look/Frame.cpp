#include "ui/look/Frame.h"

#include <QPainter>

namespace quorbit {

void paintFrame(QPainter &painter, const QRectF &rect, double radius, const QColor &fill, const QColor &edge,
                double width) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(fill);
    painter.drawRoundedRect(rect, radius, radius);
    if (edge.isValid() && edge.alpha() > 0) {
        painter.setPen(QPen(edge, width));
        painter.setBrush(Qt::NoBrush);
        const double half = width / 2;
        painter.drawRoundedRect(rect.adjusted(half, half, -half, -half), radius - half, radius - half);
    }
    painter.restore();
}

} // namespace quorbit
