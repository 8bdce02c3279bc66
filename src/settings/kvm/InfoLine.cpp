#include "settings/kvm/InfoLine.h"

#include "ui/text/IconLabel.h"

#include <QVBoxLayout>

namespace quorbit {

namespace {
constexpr double symbolColumn = 18;
constexpr int gap = 10;
constexpr int padding = 2;
} // namespace

InfoLine::InfoLine(const QString &icon, const QString &text, QWidget *parent) : QWidget(parent) {
    auto *line = new IconLabel(icon, text, TextStyle::callout, TextColor::secondary);
    line->symbol().setColumnWidth(symbolColumn);
    wrapping(&line->text());
    line->setGap(gap);
    auto *stack = new QVBoxLayout(this);
    stack->setContentsMargins(0, padding, 0, padding);
    stack->addWidget(line);
}

} // namespace quorbit
