#include "ui/form/Card.h"

#include "ui/look/Frame.h"
#include "ui/look/Inherited.h"
#include "ui/look/Theme.h"

#include <QPainter>
#include <QVBoxLayout>

namespace quorbit {

namespace {
constexpr double plainRadius = 8;
constexpr double tintedRadius = 10;
constexpr double tintedEdge = 0.35;
} // namespace

Card::Card(Kind kind, QWidget *parent)
    : QWidget(parent), AccessibleControl(this), kind_(kind), rows_(new QVBoxLayout(this)) {
    rows_->setContentsMargins(1, 1, 1, 1);
    rows_->setSpacing(0);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Minimum);
    if (kind_ == Kind::tinted)
        followInherited(this, [this] { setPalette(tintedPalette(inheritedPalette(*this))); });
}

void Card::addRow(QWidget *row) {
    rows_->addWidget(row);
}

void Card::paintEvent(QPaintEvent *) {
    const ThemeColors colors = themeColors(palette());
    QPainter painter(this);
    if (kind_ == Kind::tinted) {
        paintFrame(painter, rect(), tintedRadius, colors.tint, withAlpha(colors.accent, tintedEdge));
        return;
    }
    paintFrame(painter, rect(), plainRadius, colors.card, colors.cardEdge);
    bool first = true;
    for (int i = 0; i < rows_->count(); ++i) {
        const QWidget *row = rows_->itemAt(i)->widget();
        if (!row || row->isHidden())
            continue;
        if (!first)
            painter.fillRect(QRect(1, row->y(), width() - 2, 1), colors.separator);
        first = false;
    }
}

} // namespace quorbit
