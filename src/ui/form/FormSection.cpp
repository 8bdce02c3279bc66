#include "ui/form/FormSection.h"

#include "ui/form/Card.h"
#include "ui/look/Layouts.h"
#include "ui/text/TextLabel.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

namespace quorbit {

namespace {
constexpr int sideMargin = 10;
constexpr int titleGap = 6;
constexpr int footerGap = 7;
} // namespace

FormSection::FormSection(const QString &title, QWidget *parent)
    : QWidget(parent)
    , column_(columnLayout(this))
    , header_(new QWidget)
    , headerRow_(new QHBoxLayout(header_))
    , title_(new TextLabel(title, TextStyle::headline, TextColor::primary))
    , card_(new Card) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Minimum);
    headerRow_->setContentsMargins(sideMargin, 0, sideMargin, titleGap);
    headerRow_->addWidget(title_, 1);
    column_->addWidget(header_);
    column_->addWidget(card_);
    header_->setVisible(!title.isEmpty());
    card_->setAccessibleName(title);
    title_->setHeading();
    title_->setBuddy(card_);
}

void FormSection::setHeaderControl(QWidget *control) {
    headerRow_->addWidget(control);
}

void FormSection::setFooter(const QString &text) {
    if (!footer_) {
        footer_ = wrapping(new TextLabel(TextStyle::caption, TextColor::secondary));
        auto *row = new QHBoxLayout;
        row->setContentsMargins(sideMargin, footerGap, sideMargin, 0);
        row->addWidget(footer_);
        column_->addLayout(row);
    }
    footer_->setText(text);
    footer_->setVisible(!text.isEmpty());
}

void FormSection::setFooterWidget(QWidget *footer) {
    auto *row = new QHBoxLayout;
    row->setContentsMargins(sideMargin, footerGap, sideMargin, 0);
    row->addWidget(footer);
    column_->insertLayout(2, row);
}

void FormSection::addRow(QWidget *row) {
    card_->addRow(row);
}

} // namespace quorbit
