#include "ui/form/Card.h"

#include "ui/controls/HoverRow.h"
#include "ui/look/Frame.h"
#include "ui/look/Theme.h"

#include <QEvent>
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
    if (kind_ == Kind::tinted && parent != nullptr) {
        parent->installEventFilter(this);
        restyle();
    }
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
    // A tinted card has a palette of its own, which hides changes of the parent's, so it watches the parent.
    if (kind_ == Kind::tinted && event->type() == QEvent::ParentAboutToChange && parentWidget() != nullptr)
        parentWidget()->removeEventFilter(this);
    if (event->type() == QEvent::LayoutRequest)
        roundOutermostRows();
    const bool handled = QWidget::event(event);
    if (kind_ == Kind::tinted && event->type() == QEvent::ParentChange && parentWidget() != nullptr) {
        parentWidget()->installEventFilter(this);
        restyle();
    }
    return handled;
}

bool Card::eventFilter(QObject *watched, QEvent *event) {
    if (watched == parentWidget() && event->type() == QEvent::PaletteChange)
        restyle();
    return QWidget::eventFilter(watched, event);
}

void Card::restyle() {
    setPalette(tintedPalette(parentWidget()->palette()));
}

/// The highlight of the outermost rows keeps to the card's corners, and the hairlines follow the rows.
void Card::roundOutermostRows() {
    QWidget *first = nullptr;
    QWidget *last = nullptr;
    for (int i = 0; i < rows_->count(); ++i) {
        QWidget *row = rows_->itemAt(i)->widget();
        if (row == nullptr || row->isHidden())
            continue;
        first = first == nullptr ? row : first;
        last = row;
    }
    for (int i = 0; i < rows_->count(); ++i) {
        QWidget *row = rows_->itemAt(i)->widget();
        if (auto *hover = qobject_cast<HoverRow *>(row))
            hover->setRoundedCorners(row == first, row == last);
    }
    update();
}

} // namespace quorbit
