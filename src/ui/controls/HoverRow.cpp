#include "ui/controls/HoverRow.h"

#include "ui/access/FocusRing.h"
#include "ui/look/Theme.h"

#include <QApplication>
#include <QEvent>
#include <QPainter>

namespace quorbit {

namespace {
// The corner of a card, inside its edge.
constexpr double cornerRadius = 7;
} // namespace

HoverRow::HoverRow(QWidget *parent) : Pressable(parent) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Minimum);
    FocusRing::install(this, 6, -4);
}

void HoverRow::setRoundedCorners(bool top, bool bottom) {
    if (top == roundTop_ && bottom == roundBottom_)
        return;
    roundTop_ = top;
    roundBottom_ = bottom;
    update();
}

void HoverRow::setHighlighted(bool highlighted) {
    highlighted_ = highlighted;
    const QPalette inherited =
        parentWidget() != nullptr ? parentWidget()->palette() : QApplication::palette();
    setPalette(highlighted ? highlightedPalette(inherited) : QPalette());
    update();
}

bool HoverRow::event(QEvent *event) {
    const bool handled = Pressable::event(event);
    switch (event->type()) {
    case QEvent::Enter:
        setHighlighted(isEnabled());
        break;
    case QEvent::Leave:
    case QEvent::Hide:
        if (highlighted_)
            setHighlighted(false);
        break;
    case QEvent::ApplicationPaletteChange:
        if (highlighted_)
            setHighlighted(true);
        break;
    default:
        break;
    }
    return handled;
}

void HoverRow::paintEvent(QPaintEvent *) {
    if (!highlighted_ && !isDown())
        return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(themeColors(palette()).hover);
    // A corner that is not wanted is pushed out of sight.
    const QRectF shape =
        QRectF(rect()).adjusted(0, roundTop_ ? 0 : -cornerRadius, 0, roundBottom_ ? 0 : cornerRadius);
    const double radius = roundTop_ || roundBottom_ ? cornerRadius : 0;
    painter.drawRoundedRect(shape, radius, radius);
}

} // namespace quorbit
