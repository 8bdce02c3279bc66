#include "menubar/PanelMetrics.h"

#include "ui/text/SymbolLabel.h"
#include "ui/text/TextLabel.h"

#include <QHBoxLayout>

namespace quorbit::panel {

namespace {
// The symbols' own margin lets them stand a little larger than their column and still look as wide.
constexpr double columnWidth = 14;
constexpr double symbolSize = 15;
} // namespace

QHBoxLayout *rowLayout(QWidget *row, int inset) {
    auto *line = new QHBoxLayout(row);
    line->setContentsMargins(sideInset, inset, sideInset, inset);
    line->setSpacing(columnSpacing);
    return line;
}

SymbolLabel *columnSymbol(const QString &symbol) {
    auto *label = new SymbolLabel(symbol, symbolSize);
    label->setColumnWidth(columnWidth);
    return label;
}

void takeRemainingWidth(TextLabel *text) {
    QSizePolicy policy = text->sizePolicy();
    policy.setHorizontalPolicy(QSizePolicy::Ignored);
    text->setSizePolicy(policy);
}

} // namespace quorbit::panel
