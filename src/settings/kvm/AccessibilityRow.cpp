#include "settings/kvm/AccessibilityRow.h"

#include "ui/controls/Button.h"
#include "ui/look/Layouts.h"
#include "ui/text/SymbolLabel.h"
#include "ui/text/TextLabel.h"

#include <QEvent>
#include <QVBoxLayout>

namespace quorbit {

namespace {
constexpr double symbolSize = 22;
constexpr int padding = 4;
constexpr int itemGap = 12;
constexpr int lineGap = 4;
constexpr int buttonGap = 6;
} // namespace

AccessibilityRow::AccessibilityRow(QWidget *parent)
    : QWidget(parent)
    , symbol_(new SymbolLabel({}, symbolSize))
    , title_(wrapping(new TextLabel(TextStyle::headline)))
    , description_(wrapping(new TextLabel(TextStyle::caption, TextColor::secondary)))
    , buttons_(makeButtons()) {
    auto *texts = new QVBoxLayout;
    texts->setSpacing(lineGap);
    texts->addWidget(title_);
    texts->addWidget(description_);
    auto *state = new QHBoxLayout;
    state->setSpacing(itemGap);
    state->addWidget(symbol_, 0, Qt::AlignTop);
    state->addLayout(texts, 1);
    auto *middle = new QVBoxLayout;
    middle->addStretch();
    middle->addLayout(state);
    middle->addStretch();
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, padding, 0, padding);
    row->setSpacing(itemGap);
    row->addLayout(middle, 1);
    row->addWidget(buttons_, 0, Qt::AlignTop);
    buttons_->hide();
    keepHeight();
}

QWidget *AccessibilityRow::makeButtons() {
    auto *grant = new Button(qtTrId("kvm.grant"), ButtonKind::prominent, ButtonSize::small);
    auto *restart = new Button(qtTrId("kvm.restart_helper"), ButtonKind::bordered, ButtonSize::small);
    connect(grant, &Button::clicked, this, &AccessibilityRow::grantRequested);
    connect(restart, &Button::clicked, this, &AccessibilityRow::restartRequested);
    auto *buttons = new QWidget; // which joins this row last, to be read last
    QVBoxLayout *column = columnLayout(buttons, buttonGap);
    column->addWidget(grant, 0, Qt::AlignTrailing);
    column->addWidget(restart, 0, Qt::AlignTrailing);
    return buttons;
}

// The row keeps its height when the buttons go, so that nothing jumps when the permission is there.
void AccessibilityRow::keepHeight() {
    setMinimumHeight(buttons_->sizeHint().height() + 2 * padding);
}

void AccessibilityRow::changeEvent(QEvent *event) {
    if (event->type() == QEvent::FontChange)
        keepHeight();
    QWidget::changeEvent(event);
}

void AccessibilityRow::render(const KvmModel::Accessibility &model) {
    if (shown_ == model)
        return;
    shown_ = model;
    symbol_->setSymbol(model.symbol);
    symbol_->setColor(model.color);
    title_->setText(model.title);
    description_->setText(model.description);
    buttons_->setVisible(model.offersGrant);
}

} // namespace quorbit
