#include "ui/text/Divider.h"

#include "ui/look/Theme.h"

#include <QPainter>

namespace quorbit {

Divider::Divider(QWidget *parent) : QWidget(parent), AccessibleControl(this) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void Divider::paintEvent(QPaintEvent *) {
    QPainter(this).fillRect(rect(), themeColors(palette()).separator);
}

} // namespace quorbit
