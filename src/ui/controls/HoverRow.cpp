#include "ui/controls/HoverRow.h"

#include "ui/access/FocusRing.h"
#include "ui/look/Inherited.h"
#include "ui/look/Theme.h"

#include <QEvent>
#include <QPainter>

namespace quorbit {

HoverRow::HoverRow(QWidget *parent) : Pressable(parent) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Minimum);
    FocusRing::install(this, 6, -4);
}

void HoverRow::setHighlighted(bool highlighted) {
    highlighted_ = highlighted;
    setPalette(highlighted ? highlightedPalette(inheritedPalette(*this)) : QPalette());
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
    if (highlighted_ || isDown())
        QPainter(this).fillRect(rect(), themeColors(palette()).hover);
}

} // namespace quorbit
