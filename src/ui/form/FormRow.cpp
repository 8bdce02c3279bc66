#include "ui/form/FormRow.h"

#include "ui/look/Layouts.h"
#include "ui/look/TextStyle.h"
#include "ui/text/SymbolLabel.h"
#include "ui/text/TextLabel.h"

#include <QEvent>
#include <QHBoxLayout>

#include <utility>

namespace quorbit {

namespace {
constexpr double leastHeight = 38;
constexpr int sideMargin = 12;
constexpr int controlGap = 8;
} // namespace

FormRow::FormRow(QWidget *content, QWidget *parent) : QWidget(parent), row_(lineLayout(this, controlGap)) {
    row_->setContentsMargins(sideMargin, 6, sideMargin, 6);
    row_->addWidget(content, 1);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Minimum);
    updateMinimum();
}

FormRow::FormRow(TextLabel *label, QWidget *control, QWidget *parent) : FormRow(label, parent) {
    label_ = label;
    if (control)
        addControl(control);
}

FormRow::FormRow(const QString &label, QWidget *control, QWidget *parent)
    : FormRow(new TextLabel(label, TextStyle::body, TextColor::primary), control, parent) {}

void FormRow::setLabel(const QString &label) {
    if (!label_ || label == label_->text())
        return;
    const QString before = label_->text();
    label_->setText(label);
    for (QWidget *control : std::as_const(controls_)) {
        if (control->accessibleName() == before)
            control->setAccessibleName(label);
    }
}

void FormRow::setSymbol(const QString &name) {
    if (!symbol_) {
        symbol_ = new SymbolLabel(name, 16, TextColor::secondary);
        row_->insertWidget(0, symbol_);
    }
    symbol_->setSymbol(name);
    symbol_->setVisible(!name.isEmpty());
}

void FormRow::addControl(QWidget *control) {
    row_->addWidget(control);
    controls_ << control;
    if (label_ && control->focusPolicy() != Qt::NoFocus && control->accessibleName().isEmpty()) {
        control->setAccessibleName(label_->text());
        label_->setBuddy(control);
    }
}

void FormRow::updateMinimum() {
    setMinimumHeight(scaled(leastHeight, font()));
}

void FormRow::changeEvent(QEvent *event) {
    if (event->type() == QEvent::FontChange)
        updateMinimum();
    QWidget::changeEvent(event);
}

} // namespace quorbit
