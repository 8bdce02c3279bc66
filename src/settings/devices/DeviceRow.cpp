#include "settings/devices/DeviceRow.h"

#include "ui/controls/Button.h"
#include "ui/text/SelectableText.h"
#include "ui/text/SymbolLabel.h"
#include "ui/text/TextLabel.h"

#include <QCoreApplication>
#include <QHBoxLayout>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace quorbit {

namespace {

constexpr double symbolSize = 22;
constexpr double symbolColumn = 28;
constexpr QMargins padding(4, 9, 4, 9);
constexpr int columnGap = 10;
constexpr int lineGap = 2;
constexpr int badgeGap = 6;

} // namespace

DeviceRow::DeviceRow(const DevicesModel::Row &model, QWidget *parent)
    : QWidget(parent)
    , symbol_(new SymbolLabel(model.symbol, symbolSize, TextColor::secondary))
    , name_(new TextLabel(TextStyle::body, TextColor::primary))
    , badge_(new TextLabel(TextStyle::caption2, TextColor::secondary))
    , title_(new QBoxLayout(QBoxLayout::LeftToRight))
    , fingerprint_(new SelectableText(TextStyle::caption, TextColor::secondary, true))
    , remove_(new Button(qtTrId("devices.unbind"), ButtonKind::destructive, ButtonSize::small)) {
    symbol_->setColumnWidth(symbolColumn);
    title_->setSpacing(badgeGap);
    title_->addWidget(name_);
    title_->addWidget(badge_);
    title_->addStretch();
    auto *texts = new QVBoxLayout;
    texts->setSpacing(lineGap);
    texts->addLayout(title_);
    texts->addWidget(fingerprint_);
    auto *line = new QHBoxLayout(this);
    line->setContentsMargins(padding);
    line->setSpacing(columnGap);
    line->addWidget(symbol_);
    line->addLayout(texts, 1);
    line->addWidget(remove_);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);

    connect(remove_, &Button::clicked, this, &DeviceRow::removeRequested);
    fill(model);
}

void DeviceRow::render(const DevicesModel::Row &model) {
    if (shown_ != model)
        fill(model);
}

void DeviceRow::fill(const DevicesModel::Row &model) {
    shown_ = model;
    symbol_->setSymbol(model.symbol);
    name_->setText(model.name);
    badge_->setText(model.badge);
    badge_->setColor(model.badgeColor);
    fingerprint_->setValue(model.fingerprint);
    // Heard alone, each has to say whose it is; what it is, the fingerprint's text says itself.
    fingerprint_->setAccessibleName(model.name);
    remove_->setAccessibleName(remove_->label() + u", "_s + model.name);
    arrange();
}

void DeviceRow::resizeEvent(QResizeEvent *) {
    arrange();
}

/// A long name makes room for the badge; where that leaves too little of it, the badge has a line of its own.
void DeviceRow::arrange() {
    const int leastName = std::min(name_->sizeHint().width(), name_->fontMetrics().averageCharWidth() * 8);
    const bool fits = leastName + badgeGap + badge_->sizeHint().width() <= fingerprint_->width();
    title_->setDirection(fits ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
    title_->setSpacing(fits ? badgeGap : lineGap);
    badge_->setSizePolicy(fits ? QSizePolicy::Fixed : QSizePolicy::Preferred, QSizePolicy::Fixed);
}

QWidget *DeviceRow::firstFocusStop() const {
    return fingerprint_;
}

QWidget *DeviceRow::lastFocusStop() const {
    return remove_;
}

} // namespace quorbit
