#include "menubar/UpdateBadge.h"

#include "ui/access/FocusRing.h"
#include "ui/look/Theme.h"
#include "ui/look/ToolTip.h"

#include <QCoreApplication>
#include <QHelpEvent>
#include <QPainter>

namespace quorbit {

namespace {
constexpr int diameter = 8;
constexpr double outlineWidth = 0.5;
constexpr double outlineOpacity = 0.6;
} // namespace

UpdateBadge::UpdateBadge(QWidget *parent) : Pressable(parent) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    FocusRing::install(this, sizeHint().height() / 2.0, -2);
}

void UpdateBadge::setVersion(const QString &version) {
    const QString text = qtTrId("menu.update_badge_tooltip").arg(version);
    if (text != accessibleName())
        setAccessibleName(text);
}

QSize UpdateBadge::sizeHint() const {
    return {diameter + 2 * reach, diameter + 2 * reach};
}

bool UpdateBadge::event(QEvent *event) {
    if (event->type() == QEvent::ToolTip) {
        showToolTip(*static_cast<QHelpEvent *>(event), accessibleName(), this);
        return true;
    }
    return Pressable::event(event);
}

void UpdateBadge::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(withAlpha(Qt::white, outlineOpacity), outlineWidth));
    painter.setBrush(shapeColor(palette(), TextColor::red));
    QRectF dot(0, 0, diameter, diameter);
    dot.moveCenter(QRectF(rect()).center());
    painter.drawEllipse(dot);
}

} // namespace quorbit
