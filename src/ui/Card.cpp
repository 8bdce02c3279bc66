#include "ui/Card.h"

#include "ui/Frame.h"
#include "ui/HoverRow.h"
#include "ui/Theme.h"

#include <QEvent>
#include <QPainter>
#include <QVBoxLayout>

namespace quorbit {

namespace {
constexpr double plainRadius = 8;
constexpr double tintedRadius = 10;
} // namespace

Card::Card(Kind kind, QWidget *parent)
    : QWidget(parent), AccessibleControl(this), kind_(kind), rows_(new QVBoxLayout(this)) {
    rows_->setContentsMargins(1, 1, 1, 1);
    rows_->setSpacing(0);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Minimum);
}

void Card::addRow(QWidget *row) {
    insertRow(rowCount(), row);
}

void Card::insertRow(int index, QWidget *row) {
    rows_->insertWidget(index, row);
}

int Card::rowCount() const {
    return rows_->count();
}

void Card::paintEvent(QPaintEvent *) {
    const ThemeColors colors = themeColors(palette());
    QPainter painter(this);
    if (kind_ == Kind::tinted) {
        paintFrame(painter, rect(), tintedRadius, withAlpha(colors.accent, 0.08),
                   withAlpha(colors.accent, 0.35));
        return;
    }
    paintFrame(painter, rect(), plainRadius, colors.card, colors.cardEdge);
    bool first = true;
    for (int i = 0; i < rows_->count(); ++i) {
        const QWidget *row = rows_->itemAt(i)->widget();
        if (row == nullptr || row->isHidden())
            continue;
        if (!first)
            painter.fillRect(QRect(1, row->y(), width() - 2, 1), colors.separator);
        first = false;
    }
}

bool Card::event(QEvent *event) {
    if (event->type() == QEvent::LayoutRequest) {
        // The highlight of the outermost rows keeps to the card's corners, and the hairlines follow the rows.
        HoverRow *firstRow = nullptr;
        HoverRow *lastRow = nullptr;
        bool any = false;
        for (int i = 0; i < rows_->count(); ++i) {
            QWidget *row = rows_->itemAt(i)->widget();
            if (row == nullptr || row->isHidden())
                continue;
            auto *hover = qobject_cast<HoverRow *>(row);
            if (hover != nullptr)
                hover->setRoundedCorners(false, false);
            if (!any)
                firstRow = hover;
            lastRow = hover;
            any = true;
        }
        if (firstRow != nullptr)
            firstRow->setRoundedCorners(true, firstRow == lastRow);
        if (lastRow != nullptr)
            lastRow->setRoundedCorners(firstRow == lastRow, true);
        update();
    }
    return QWidget::event(event);
}

} // namespace quorbit
