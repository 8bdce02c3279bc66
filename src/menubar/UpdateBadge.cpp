#include "menubar/UpdateBadge.h"

#include "ui/FocusRing.h"
#include "ui/Theme.h"

#include <QCoreApplication>
#include <QPainter>
#include <QTextDocument>

using namespace Qt::StringLiterals;

namespace quorbit {

namespace {
constexpr int diameter = 8;
constexpr double outlineWidth = 0.5;
constexpr double outlineOpacity = 0.6;
} // namespace

UpdateBadge::UpdateBadge(QWidget *parent) : QAbstractButton(parent), AccessibleControl(this) {
    setFocusPolicy(Qt::TabFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    FocusRing::install(this, sizeHint().height() / 2.0, -2);
}

void UpdateBadge::setVersion(const QString &version) {
    const QString text = qtTrId("menu.update_badge_tooltip").arg(version);
    if (text == accessibleName())
        return;
    setAccessibleName(text);
    // A tip that looks like markup would be shown as such.
    setToolTip(Qt::mightBeRichText(text) ? u"<span>%1</span>"_s.arg(text.toHtmlEscaped()) : text);
}

QSize UpdateBadge::sizeHint() const {
    return {diameter + 2 * reach, diameter + 2 * reach};
}

QStringList UpdateBadge::accessibleActions() const {
    return {QAccessibleActionInterface::pressAction()};
}

void UpdateBadge::performAccessibleAction(const QString &action) {
    if (action == QAccessibleActionInterface::pressAction())
        click();
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
