#include "ui/controls/Switch.h"

#include "ui/access/FocusRing.h"
#include "ui/look/ControlStyle.h"
#include "ui/look/TextStyle.h"
#include "ui/look/Theme.h"

#include <QPainter>

namespace quorbit {

namespace {

constexpr QSize regularSize(34, 20);
constexpr QSize smallSize(28, 17);
constexpr double knobMargin = 2;

QColor between(const QColor &off, const QColor &on, double position) {
    return composed(withAlpha(on, position), off);
}

} // namespace

Switch::Switch(Size size, QWidget *parent) : Pressable(parent), size_(size) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    FocusRing::install(this, sizeHint().height() / 2.0);
    animation_.setEasingCurve(QEasingCurve::InOutCubic);
    connect(&animation_, &QVariantAnimation::valueChanged, this, [this](const QVariant &value) {
        position_ = value.toDouble();
        update();
    });
    connect(this, &QAbstractButton::clicked, this, [this] { Q_EMIT flipped(!on_); });
}

void Switch::setOn(bool on) {
    if (on == on_)
        return;
    on_ = on;
    animation_.stop();
    const double target = on ? 1 : 0;
    if (const int duration = animationDuration(*this); duration > 0) {
        animation_.setDuration(duration);
        animation_.setStartValue(position_);
        animation_.setEndValue(target);
        animation_.start();
    } else {
        position_ = target;
        update();
    }
    QAccessible::State changed;
    changed.checked = true;
    accessibleStateChanged(changed);
}

QSize Switch::sizeHint() const {
    const QSize size = size_ == Size::small ? smallSize : regularSize;
    return {scaled(size.width(), font()), scaled(size.height(), font())};
}

void Switch::addAccessibleState(QAccessible::State &state) const {
    Pressable::addAccessibleState(state);
    state.checkable = true;
    state.checked = on_;
}

QStringList Switch::accessibleActions() const {
    return {QAccessibleActionInterface::toggleAction(), QAccessibleActionInterface::pressAction()};
}

void Switch::paintEvent(QPaintEvent *) {
    const ThemeColors colors = themeColors(palette());
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    dimIfDisabled(painter, *this);

    QRectF track{QPointF(), QSizeF(sizeHint())};
    track.moveCenter(QRectF(rect()).center());
    const QColor face = between(colors.track, colors.accent, position_);
    painter.setBrush(face);
    painter.drawRoundedRect(track, track.height() / 2, track.height() / 2);
    if (isDown()) {
        painter.setBrush(withAlpha(Qt::black, 0.1));
        painter.drawRoundedRect(track, track.height() / 2, track.height() / 2);
    }

    const double diameter = track.height() - 2 * knobMargin;
    const double way = track.width() - 2 * knobMargin - diameter;
    const double shift = layoutDirection() == Qt::RightToLeft ? 1 - position_ : position_;
    const QRectF knob(track.left() + knobMargin + shift * way, track.top() + knobMargin, diameter, diameter);
    painter.setBrush(withAlpha(Qt::black, 0.08));
    painter.drawEllipse(knob.adjusted(-0.5, -0.25, 0.5, 1));
    painter.setBrush(withAlpha(Qt::black, 0.1));
    painter.drawEllipse(knob.translated(0, 0.6));
    painter.setBrush(colors.highContrast ? readableOn(face) : QColor(Qt::white));
    painter.drawEllipse(knob);
}

} // namespace quorbit
