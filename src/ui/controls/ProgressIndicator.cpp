#include "ui/controls/ProgressIndicator.h"

#include "ui/look/ControlStyle.h"
#include "ui/look/TextStyle.h"
#include "ui/look/Theme.h"

#include <QPainter>
#include <QTimerEvent>

#include <algorithm>

namespace quorbit {

namespace {
constexpr double side = 16;
constexpr int spokes = 8;
constexpr int turnTime = 100; // ms
} // namespace

ProgressIndicator::ProgressIndicator(TextColor color, QWidget *parent)
    : QWidget(parent), AccessibleControl(this), color_(color) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize ProgressIndicator::sizeHint() const {
    return {scaled(side, font()), scaled(side, font())};
}

void ProgressIndicator::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const double size = std::min(width(), height());
    painter.translate(width() / 2.0, height() / 2.0);
    painter.scale(size / side, size / side);
    const QColor color = shapeColor(palette(), color_);
    for (int spoke = 0; spoke < spokes; ++spoke) {
        const int age = (spokes + step_ - spoke) % spokes;
        painter.setPen(
            QPen(withAlpha(color, 1.0 - 0.8 * age / (spokes - 1)), 1.8, Qt::SolidLine, Qt::RoundCap));
        painter.drawLine(QPointF(0, -3.5), QPointF(0, -6.5));
        painter.rotate(360.0 / spokes);
    }
}

void ProgressIndicator::showEvent(QShowEvent *) {
    if (animationDuration(*this) > 0)
        timer_.start(turnTime, this);
}

void ProgressIndicator::hideEvent(QHideEvent *) {
    timer_.stop();
}

void ProgressIndicator::timerEvent(QTimerEvent *event) {
    if (event->timerId() != timer_.timerId())
        return;
    if (animationDuration(*this) == 0) {
        timer_.stop();
        return;
    }
    step_ = (step_ + 1) % spokes;
    update();
}

} // namespace quorbit
