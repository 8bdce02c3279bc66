#include "ui/controls/Stepper.h"

#include "ui/access/FocusRing.h"
#include "ui/look/ControlStyle.h"
#include "ui/look/Frame.h"
#include "ui/look/Symbol.h"
#include "ui/look/TextStyle.h"
#include "ui/look/Theme.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QTimerEvent>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace quorbit {

namespace {
constexpr double leastTextWidth = 50;
constexpr double gap = 8;
constexpr double buttonsWidth = 18;
constexpr double buttonsHeight = 24;
constexpr double radius = 5;
constexpr double chevron = 12;
constexpr int stepsOfAPage = 10;
constexpr int firstRepeat = 400; // ms
constexpr int nextRepeat = 80;
} // namespace

Stepper::Stepper(int minimum, int maximum, int step, QWidget *parent)
    : QWidget(parent)
    , AccessibleControl(this)
    , minimum_(minimum)
    , maximum_(maximum)
    , step_(step)
    , value_(minimum) {
    setFocusPolicy(Qt::TabFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    FocusRing::install(this, radius);
}

void Stepper::setValue(int value) {
    if (value == value_)
        return;
    value_ = value;
    updateGeometry();
    update();
    accessibleValueChanged(value);
}

QSize Stepper::sizeHint() const {
    constexpr double beside = gap + buttonsWidth;
    const int text = textWidth(textFont(TextStyle::body, font(), true), QString::number(value_));
    return {std::max(scaled(leastTextWidth + beside, font()), text + scaled(beside, font())),
            scaled(buttonsHeight, font())};
}

QRect Stepper::buttons() const {
    const int buttonWidth = scaled(buttonsWidth, font());
    const int buttonHeight = scaled(buttonsHeight, font());
    const int left = layoutDirection() == Qt::RightToLeft ? 0 : width() - buttonWidth;
    return {left, (height() - buttonHeight) / 2, buttonWidth, buttonHeight};
}

QStringList Stepper::accessibleActions() const {
    return {QAccessibleActionInterface::increaseAction(), QAccessibleActionInterface::decreaseAction()};
}

void Stepper::performAccessibleAction(const QString &action) {
    if (action == QAccessibleActionInterface::increaseAction())
        ask(value_ + step_);
    else if (action == QAccessibleActionInterface::decreaseAction())
        ask(value_ - step_);
}

void Stepper::ask(int wanted) {
    const int possible = std::clamp(wanted, minimum_, maximum_);
    if (possible != value_)
        Q_EMIT stepped(possible);
}

void Stepper::paintEvent(QPaintEvent *) {
    const ThemeColors colors = themeColors(palette());
    QPainter painter(this);
    dimIfDisabled(painter, *this);
    const QRect box = buttons();
    const int space = scaled(gap, font());
    const bool mirrored = layoutDirection() == Qt::RightToLeft;
    const QRect text = mirrored ? rect().adjusted(box.width() + space, 0, 0, 0)
                                : rect().adjusted(0, 0, -box.width() - space, 0);
    painter.setFont(textFont(TextStyle::body, font(), true));
    painter.setPen(colors.primary);
    painter.drawText(text, Qt::AlignRight | Qt::AlignVCenter, // mirrored with the layout
                     QString::number(value_));

    paintFrame(painter, box, radius, colors.control, colors.controlEdge);
    const QRect upper(box.left(), box.top(), box.width(), box.height() / 2);
    const QRect lower(box.left(), upper.bottom() + 1, box.width(), box.height() - upper.height());
    if (held_ != 0)
        paintFrame(painter, (held_ > 0 ? upper : lower).adjusted(2, 2, -2, -2), radius - 2, colors.pill,
                   Qt::transparent);
    const double side = chevron * fontScale(font());
    const auto paintChevron = [&](const QRect &half, double shift, const QString &name, bool possible) {
        QRectF square(0, 0, side, side);
        square.moveCenter(QRectF(half).center() + QPointF(0, shift));
        paintSymbol(painter, square, name, possible ? colors.primary : colors.tertiary);
    };
    paintChevron(upper, 1, u"chevron.up"_s, value_ < maximum_);
    paintChevron(lower, -1, u"chevron.down"_s, value_ > minimum_);
}

void Stepper::mousePressEvent(QMouseEvent *event) {
    if (event->button() != Qt::LeftButton || !buttons().contains(event->position().toPoint()))
        return;
    held_ = event->position().y() < buttons().center().y() ? 1 : -1;
    heldFrom_ = value_;
    update();
    repeat_.start(firstRepeat, this);
    ask(value_ + held_ * step_);
}

void Stepper::mouseReleaseEvent(QMouseEvent *) {
    held_ = 0;
    repeat_.stop();
    update();
}

void Stepper::askByKey(const QKeyEvent &event, int steps) {
    if (event.isAutoRepeat() && value_ == heldFrom_)
        return;
    heldFrom_ = value_;
    ask(value_ + steps * step_);
}

void Stepper::keyPressEvent(QKeyEvent *event) {
    switch (event->key()) {
    case Qt::Key_Up:
        return askByKey(*event, 1);
    case Qt::Key_Down:
        return askByKey(*event, -1);
    case Qt::Key_PageUp:
        return askByKey(*event, stepsOfAPage);
    case Qt::Key_PageDown:
        return askByKey(*event, -stepsOfAPage);
    default:
        QWidget::keyPressEvent(event);
    }
}

void Stepper::timerEvent(QTimerEvent *event) {
    if (event->timerId() != repeat_.timerId())
        return;
    repeat_.start(nextRepeat, this);
    if (value_ == heldFrom_)
        return;
    heldFrom_ = value_;
    ask(value_ + held_ * step_);
}

void Stepper::changeEvent(QEvent *event) {
    if (event->type() == QEvent::EnabledChange) {
        held_ = 0;
        repeat_.stop();
    }
    QWidget::changeEvent(event);
}

} // namespace quorbit
