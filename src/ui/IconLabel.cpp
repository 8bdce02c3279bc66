#include "ui/IconLabel.h"

#include <QHBoxLayout>

namespace quorbit {

namespace {

constexpr int gap = 6;

double symbolSize(TextStyle style) {
    return style == TextStyle::caption || style == TextStyle::caption2 ? 13 : 16;
}

} // namespace

IconLabel::IconLabel(const QString &symbol, const QString &text, TextStyle style, TextColor color,
                     QWidget *parent)
    : QWidget(parent)
    , symbol_(new SymbolLabel(symbol, symbolSize(style), color))
    , text_(new TextLabel(text, style, color)) {
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins({});
    row->setSpacing(gap);
    row->addWidget(symbol_);
    row->addWidget(text_, 1);
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

} // namespace quorbit
