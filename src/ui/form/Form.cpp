#include "ui/form/Form.h"

#include <QVBoxLayout>

namespace quorbit {

namespace {
constexpr int margin = 20;
constexpr int sectionGap = 18;
constexpr int marginAroundRevealed = 8;
} // namespace

Form::Form(QWidget *parent) : QScrollArea(parent) {
    auto *content = new QWidget;
    column_ = new QVBoxLayout(content);
    column_->setContentsMargins(margin, margin, margin, margin);
    column_->setSpacing(sectionGap);
    column_->addStretch(1); // no section grows beyond what it needs
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setWidgetResizable(true);
    setWidget(content);
    // The scroll area and its content would paint the palette's base and window colours.
    viewport()->setAutoFillBackground(false);
    content->setAutoFillBackground(false);
}

void Form::addSection(QWidget *section) {
    column_->insertWidget(column_->count() - 1, section); // above the stretch
}

void Form::reveal(const QWidget &widget, const QRect &part) {
    const QPoint centre = widget.mapTo(this->widget(), part.center());
    ensureVisible(centre.x(), centre.y(), 0, part.height() / 2 + marginAroundRevealed);
}

QSize Form::sizeHint() const {
    return widget()->sizeHint();
}

} // namespace quorbit
