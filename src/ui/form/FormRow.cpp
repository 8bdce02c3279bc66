#include "ui/form/FormRow.h"

#include "ui/look/TextStyle.h"
#include "ui/text/SymbolLabel.h"
#include "ui/text/TextLabel.h"

#include <QEvent>
#include <QHBoxLayout>

#include <cmath>
#include <utility>

namespace quorbit {

namespace {
constexpr double leastHeight = 38;
constexpr int sideMargin = 12;
constexpr int controlGap = 8;
} // namespace

FormRow::FormRow(const QString &label, QWidget *control, QWidget *parent)
    : QWidget(parent)
    , row_(new QHBoxLayout(this))
    , label_(new TextLabel(label, TextStyle::body, TextColor::primary)) {
    setUp(label_);
    if (control)
        addControl(control);
}

FormRow::FormRow(QWidget *content, QWidget *parent) : QWidget(parent), row_(new QHBoxLayout(this)) {
    setUp(content);
}

void FormRow::setUp(QWidget *first) {
    row_->setContentsMargins(sideMargin, 6, sideMargin, 6);
    row_->setSpacing(controlGap);
    row_->addWidget(first, 1);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Minimum);
    updateMinimum();
}

void FormRow::setLabel(const QString &label) {
    if (label_ == nullptr || label == label_->text())
        return;
    const QString before = label_->text();
    label_->setText(label);
    for (QWidget *control : std::as_const(controls_)) {
        if (control->accessibleName() == before)
            control->setAccessibleName(label);
    }
}

void FormRow::setSymbol(const QString &name) {
    if (symbol_ == nullptr) {
        symbol_ = new SymbolLabel(name, 16, TextColor::secondary);
        row_->insertWidget(0, symbol_);
    }
    symbol_->setSymbol(name);
    symbol_->setVisible(!name.isEmpty());
}

void FormRow::addControl(QWidget *control) {
    row_->addWidget(control);
    controls_ << control;
    if (label_ != nullptr && control->focusPolicy() != Qt::NoFocus && control->accessibleName().isEmpty()) {
        control->setAccessibleName(label_->text());
        label_->setBuddy(control);
    }
}

void FormRow::updateMinimum() {
    setMinimumHeight(static_cast<int>(std::lround(leastHeight * fontScale(font()))));
}

void FormRow::changeEvent(QEvent *event) {
    if (event->type() == QEvent::FontChange)
        updateMinimum();
    QWidget::changeEvent(event);
}

} // namespace quorbit
