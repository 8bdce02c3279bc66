#include "ui/text/StatusDot.h"

#include "ui/look/Theme.h"

#include <QPainter>

namespace quorbit {

StatusDot::StatusDot(TextColor color, QWidget *parent)
    : QWidget(parent), AccessibleControl(this), color_(color) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void StatusDot::setColor(TextColor color) {
    if (color == color_)
        return;
    color_ = color;
    update();
}

void StatusDot::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(shapeColor(palette(), color_));
    QRectF circle{QPointF(), QSizeF(sizeHint())};
    circle.moveCenter(QRectF(rect()).center());
    painter.drawEllipse(circle);
}

} // namespace quorbit
