#include "settings/kvm/MasterFooter.h"

#include "ui/look/Layouts.h"
#include "ui/text/IconLabel.h"

#include <QVBoxLayout>

#include <memory>

namespace quorbit {

namespace {
constexpr int lineGap = 6;
} // namespace

MasterFooter::MasterFooter(QWidget *parent) : QWidget(parent), column_(columnLayout(this, lineGap)) {}

void MasterFooter::render(const std::vector<KvmModel::FooterLine> &lines) {
    if (shown_ == lines)
        return;
    shown_ = lines;
    while (const std::unique_ptr<QLayoutItem> item{column_->takeAt(0)})
        delete item->widget();
    for (const KvmModel::FooterLine &line : lines) {
        auto *label = new IconLabel(line.symbol, line.text, TextStyle::caption, line.color);
        wrapping(&label->text());
        column_->addWidget(label);
    }
}

} // namespace quorbit
