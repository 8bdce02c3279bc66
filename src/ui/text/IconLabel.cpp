#include "ui/text/IconLabel.h"

#include "ui/look/Layouts.h"

#include <QEvent>
#include <QHBoxLayout>

namespace quorbit {

namespace {

constexpr int spacing = 6;

double symbolSize(TextStyle style) {
    return style == TextStyle::caption || style == TextStyle::caption2 ? 13 : 16;
}

} // namespace

IconLabel::IconLabel(const QString &symbol, const QString &text, TextStyle style, TextColor color,
                     QWidget *parent)
    : QWidget(parent)
    , row_(lineLayout(this, spacing))
    , symbol_(new SymbolLabel(symbol, symbolSize(style), color))
    , text_(new TextLabel(text, style, color)) {
    row_->addWidget(symbol_);
    row_->addWidget(text_, 1);
}

void IconLabel::setSymbol(const QString &name) {
    symbol_->setSymbol(name);
    symbol_->setVisible(!name.isEmpty());
}

void IconLabel::setText(const QString &text) {
    text_->setText(text);
}

void IconLabel::setColor(TextColor color) {
    symbol_->setColor(color);
    text_->setColor(color);
}

void IconLabel::setGap(int gap) {
    row_->setSpacing(gap);
}

bool IconLabel::event(QEvent *event) {
    if (event->type() == QEvent::LayoutRequest || event->type() == QEvent::Resize)
        placeSymbol();
    return QWidget::event(event);
}

// The symbol stands in the middle of a single line and of the first of several.
void IconLabel::placeSymbol() {
    const int line = text_->heightForWidth(QWIDGETSIZE_MAX);
    const bool isSingle = text_->heightForWidth(text_->width()) <= line;
    const Qt::Alignment wanted = isSingle ? Qt::Alignment() : Qt::AlignTop;
    QLayoutItem *item = row_->itemAt(0);
    if (item->alignment() == wanted)
        return;
    symbol_->setMinimumHeight(isSingle ? 0 : line);
    row_->setAlignment(symbol_, wanted);
}

} // namespace quorbit
