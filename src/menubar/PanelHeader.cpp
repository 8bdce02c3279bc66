#include "menubar/PanelHeader.h"

#include "menubar/PanelMetrics.h"
#include "menubar/UpdateBadge.h"
#include "ui/text/SymbolLabel.h"
#include "ui/text/TextLabel.h"

#include <QCoreApplication>
#include <QHBoxLayout>

namespace quorbit {

namespace {
constexpr int spacing = 10;
constexpr int nameSpacing = 1;
// A symbol's square is larger than its outline: in this one a circle is as high as in a font of 13 pixels.
constexpr double dotSize = 18;
} // namespace

PanelHeader::PanelHeader(QWidget *parent)
    : QWidget(parent)
    , dot_(new SymbolLabel({}, dotSize))
    , deviceName_(new TextLabel(TextStyle::caption, TextColor::secondary))
    , badge_(new UpdateBadge) {
    auto *product = new TextLabel(qtTrId("common.app_name"), TextStyle::headline, TextColor::primary);
    product->setHeading();
    panel::takeRemainingWidth(product);
    panel::takeRemainingWidth(deviceName_);
    auto *names = new QVBoxLayout;
    names->setSpacing(nameSpacing);
    names->addWidget(product);
    names->addWidget(deviceName_);

    QHBoxLayout *line = panel::rowLayout(this, panel::rowInset);
    line->setSpacing(spacing);
    line->addWidget(dot_);
    line->addLayout(names, 1);
    line->addWidget(badge_);
    badge_->hide();
    connect(badge_, &QAbstractButton::clicked, this, &PanelHeader::updateRequested);
}

void PanelHeader::render(const MenuBarModel &model) {
    dot_->setSymbol(model.dot.symbol);
    dot_->setColor(model.dot.color);
    dot_->setAccessibleName(model.dot.spokenLabel);
    deviceName_->setText(model.deviceName);
    if (model.availableVersion)
        badge_->setVersion(*model.availableVersion);
    showBadge(model.availableVersion.has_value());
}

void PanelHeader::showBadge(bool shown) {
    // The badge's dot ends where the rows' texts do; only its reach lies beyond.
    QMargins margins = layout()->contentsMargins();
    margins.setRight(panel::sideInset - (shown ? UpdateBadge::reach : 0));
    layout()->setContentsMargins(margins);
    badge_->setVisible(shown);
}

} // namespace quorbit
