#include "menubar/HistoryRow.h"

#include "menubar/PanelMetrics.h"
#include "ui/text/SymbolLabel.h"
#include "ui/text/TextLabel.h"
#include "wording/HistoryItem.h"

#include <QHBoxLayout>

namespace quorbit {

namespace {
// However long the source's name is, most of the row belongs to the preview.
constexpr int widestSource = 110;
} // namespace

HistoryRow::HistoryRow(const HistoryItem &model, QWidget *parent)
    : HoverRow(parent)
    , shown_(model)
    , symbol_(panel::columnSymbol(model.symbol))
    , preview_(new TextLabel(model.preview, TextStyle::body, TextColor::primary))
    , source_(new TextLabel(model.source, TextStyle::caption, TextColor::tertiary)) {
    panel::takeRemainingWidth(preview_);
    source_->setMaximumWidth(widestSource);
    source_->setAlignment(Qt::AlignTrailing | Qt::AlignVCenter);
    QHBoxLayout *line = panel::rowLayout(this, panel::rowInset);
    line->addWidget(symbol_);
    line->addWidget(preview_, 1);
    line->addSpacing(panel::columnSpacing);
    line->addWidget(source_);
}

void HistoryRow::render(const HistoryItem &model) {
    if (shown_ == model)
        return;
    shown_ = model;
    symbol_->setSymbol(model.symbol);
    preview_->setText(model.preview);
    source_->setText(model.source);
    accessibleNameChanged();
}

QString HistoryRow::accessibleFallbackName() const {
    return spokenHistoryItem(shown_.preview, shown_.source);
}

} // namespace quorbit
