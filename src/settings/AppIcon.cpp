#include "settings/AppIcon.h"

#include <QPainter>
#include <QSvgRenderer>

using namespace Qt::StringLiterals;

namespace quorbit {

namespace {
constexpr int side = 112;
} // namespace

AppIcon::AppIcon(QWidget *parent) : QWidget(parent), AccessibleControl(this) {
    setFixedSize(side, side);
}

void AppIcon::paintEvent(QPaintEvent * /*event*/) {
    QPainter painter(this);
    const double scale = painter.device()->devicePixelRatioF();
    if (drawn_.isNull() || drawn_.devicePixelRatio() != scale) {
        drawn_ = QPixmap(QSizeF(side * scale, side * scale).toSize());
        drawn_.setDevicePixelRatio(scale);
        drawn_.fill(Qt::transparent);
        QPainter drawing(&drawn_);
        QSvgRenderer(u":/quorbit/icons/quorbit.svg"_s).render(&drawing, QRectF(0, 0, side, side));
    }
    painter.drawPixmap(0, 0, drawn_);
}

} // namespace quorbit
