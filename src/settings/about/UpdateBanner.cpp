#include "settings/about/UpdateBanner.h"

#include "ui/controls/Button.h"
#include "ui/controls/ProgressIndicator.h"
#include "ui/form/Card.h"
#include "ui/look/Layouts.h"
#include "ui/text/IconLabel.h"
#include "ui/text/SymbolLabel.h"
#include "ui/text/TextLabel.h"

#include <QCoreApplication>
#include <QEvent>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace quorbit {

namespace {

constexpr int padding = 14;
constexpr double symbolSize = 20;
constexpr int symbolGap = 12;
constexpr int lineGap = 2;
constexpr int blockGap = 8;
constexpr int buttonGap = 8;
constexpr int progressGap = 6;

} // namespace

UpdateBanner::UpdateBanner(QWidget *parent)
    : QWidget(parent)
    , title_(wrapping(new TextLabel(TextStyle::headline, TextColor::primary)))
    , subtitle_(wrapping(new TextLabel(TextStyle::caption, TextColor::secondary)))
    , notes_(wrapping(new TextLabel(TextStyle::caption, TextColor::secondary)))
    , actions_(makeActionArea()) {
    title_->setHeading();
    auto *texts = new QVBoxLayout;
    texts->setSpacing(blockGap);
    auto *heading = new QVBoxLayout;
    heading->setSpacing(lineGap);
    heading->addWidget(title_);
    heading->addWidget(subtitle_);
    texts->addLayout(heading);
    texts->addWidget(notes_);
    texts->addWidget(actions_);

    auto *content = new QWidget;
    auto *line = new QHBoxLayout(content);
    line->setContentsMargins(padding, padding, padding, padding);
    line->setSpacing(symbolGap);
    line->addWidget(new SymbolLabel(u"sparkles"_s, symbolSize, TextColor::accent), 0, Qt::AlignTop);
    line->addLayout(texts, 1);
    auto *card = new Card(Card::Kind::tinted);
    card->addRow(content);
    columnLayout(this)->addWidget(card);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Minimum);

    connect(download_, &Button::clicked, this, &UpdateBanner::downloadRequested);
    connect(browser_, &Button::clicked, this, &UpdateBanner::browserRequested);
    keepActionHeight();
}

QWidget *UpdateBanner::makeActionArea() {
    running_ = new QWidget;
    QHBoxLayout *progress = lineLayout(running_, progressGap);
    auto *spinner = new ProgressIndicator;
    spinner->setAccessibleName(qtTrId("update.downloading"));
    progress->addWidget(spinner);
    auto *text = new TextLabel(qtTrId("update.downloading"), TextStyle::caption, TextColor::secondary);
    text->setBuddy(spinner);
    progress->addWidget(text);
    done_ = new IconLabel(u"checkmark.circle.fill"_s, qtTrId("update.downloaded"), TextStyle::caption,
                          TextColor::green);
    download_ = new Button(qtTrId("update.button.download"), ButtonKind::prominent, ButtonSize::small);
    browser_ = new Button(qtTrId("update.open_browser"), ButtonKind::bordered, ButtonSize::small);

    auto *area = new QWidget;
    QHBoxLayout *line = lineLayout(area, buttonGap);
    for (QWidget *part : {running_, static_cast<QWidget *>(done_), static_cast<QWidget *>(download_),
                          static_cast<QWidget *>(browser_)}) {
        part->hide();
        line->addWidget(part);
    }
    line->addStretch();
    return area;
}

// The banner keeps its height whatever the area shows.
void UpdateBanner::keepActionHeight() {
    actions_->setMinimumHeight(download_->sizeHint().height());
}

void UpdateBanner::changeEvent(QEvent *event) {
    if (event->type() == QEvent::FontChange)
        keepActionHeight();
    QWidget::changeEvent(event);
}

void UpdateBanner::render(const AboutModel::Banner &model) {
    if (shown_ == model)
        return;
    shown_ = model;
    title_->setText(model.title);
    subtitle_->setText(model.subtitle);
    notes_->setText(model.notes);
    notes_->setVisible(!model.notes.isEmpty());

    using Download = AboutModel::Download;
    const bool canAsk = model.download == Download::offered || model.download == Download::failed;
    running_->setVisible(model.download == Download::running);
    done_->setVisible(model.download == Download::done);
    download_->setVisible(canAsk);
    download_->setEnabled(model.canDownload);
    browser_->setVisible(model.download == Download::failed);
}

} // namespace quorbit
