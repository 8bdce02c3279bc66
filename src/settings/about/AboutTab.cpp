#include "settings/about/AboutTab.h"

#include "settings/AppIcon.h"
#include "settings/about/UpdateBanner.h"
#include "ui/controls/Button.h"
#include "ui/controls/MenuPicker.h"
#include "ui/form/Form.h"
#include "ui/form/FormRow.h"
#include "ui/form/FormSection.h"
#include "ui/look/Layouts.h"
#include "ui/text/IconLabel.h"
#include "ui/text/SymbolLabel.h"
#include "ui/text/TextLabel.h"
#include "update/UpdateChecker.h"
#include "wording/TimeFormats.h"

#include <QCoreApplication>
#include <QEvent>
#include <QVBoxLayout>

#include <utility>

using namespace Qt::StringLiterals;

namespace quorbit {

namespace {

constexpr int heroGap = 4;
constexpr int iconGap = 8;
constexpr int versionGap = 2;
constexpr int updateRowGap = 10;
constexpr int footerGap = 8;
constexpr double promptSymbolSize = 16;

TextLabel *centred(const QString &text, TextStyle style, TextColor color) {
    TextLabel *label = wrapping(new TextLabel(text, style, color));
    label->setAlignment(Qt::AlignCenter);
    return label;
}

} // namespace

AboutTab::AboutTab(UpdateChecker &updater, const TimeFormats &formats, AboutServices services,
                   std::optional<QString> bundleVersion, QWidget *parent)
    : SettingsTab(parent)
    , updater_(updater)
    , formats_(formats)
    , services_(std::move(services))
    , bundleVersion_(std::move(bundleVersion))
    , banner_(new UpdateBanner) {
    auto *form = new Form;
    form->addSection(makeHero());
    form->addSection(banner_);
    form->addSection(makeUpdateSection());
    form->addSection(makeLanguageSection());
    columnLayout(this, 0)->addWidget(form);
    for (QWidget *atTimes : {static_cast<QWidget *>(version_), static_cast<QWidget *>(banner_),
                             static_cast<QWidget *>(lastChecked_), restartPrompt_})
        atTimes->hide();
    keepHeights();

    connect(banner_, &UpdateBanner::downloadRequested, &updater_, &UpdateChecker::downloadUpdate);
    connect(banner_, &UpdateBanner::browserRequested, this, &AboutTab::openInBrowser);
    connect(check_, &Button::clicked, this, [this] { updater_.check(); });
    connect(language_, &MenuPicker::picked, this, &AboutTab::pickLanguage);
    connect(restart_, &Button::clicked, this, [this] { services_.restart(); });
}

QWidget *AboutTab::makeHero() {
    version_ = centred({}, TextStyle::caption, TextColor::tertiary);
    TextLabel *title = centred(qtTrId("common.app_name"), TextStyle::title2, TextColor::primary);
    title->setHeading();
    auto *hero = new QWidget;
    QVBoxLayout *column = columnLayout(hero, heroGap);
    column->addWidget(new AppIcon, 0, Qt::AlignHCenter);
    column->addSpacing(iconGap - heroGap);
    column->addWidget(title);
    column->addWidget(centred(qtTrId("about.tagline"), TextStyle::headline, TextColor::secondary));
    column->addWidget(centred(qtTrId("about.features"), TextStyle::callout, TextColor::secondary));
    auto *versionLine = new QVBoxLayout;
    versionLine->setContentsMargins(0, versionGap, 0, 0);
    versionLine->addWidget(version_);
    column->addLayout(versionLine);
    return hero;
}

FormSection *AboutTab::makeUpdateSection() {
    checkStatus_ = new IconLabel(u"checkmark.circle.fill"_s, {}, TextStyle::body, TextColor::primary);
    wrapping(&checkStatus_->text());
    check_ = new Button(qtTrId("update.button.check"));
    lastChecked_ = new TextLabel(TextStyle::caption, TextColor::tertiary);
    updateRow_ = new QWidget;
    updateRow_->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Minimum);
    QVBoxLayout *column = columnLayout(updateRow_, updateRowGap);
    auto *line = new QHBoxLayout;
    line->addWidget(checkStatus_, 1);
    line->addWidget(check_);
    column->addLayout(line);
    column->addWidget(lastChecked_);
    auto *section = new FormSection(qtTrId("about.section.updates"));
    section->addRow(new FormRow(updateRow_));
    return section;
}

FormSection *AboutTab::makeLanguageSection() {
    QStringList labels;
    for (const AboutServices::Language &language : services_.languages)
        labels << language.label;
    language_ = new MenuPicker;
    language_->setOptions(labels);
    language_->setCurrent(static_cast<int>(shown_.language));
    auto *section = new FormSection(qtTrId("about.section.language"));
    section->addRow(new FormRow(qtTrId("about.language.label"), language_));
    section->setFooterWidget(makeLanguageFooter());
    return section;
}

QWidget *AboutTab::makeLanguageFooter() {
    systemHint_ = wrapping(
        new TextLabel(qtTrId("about.language.system_hint"), TextStyle::caption, TextColor::secondary));
    TextLabel *text = wrapping(
        new TextLabel(qtTrId("about.language.restart_needed"), TextStyle::caption, TextColor::secondary));
    restart_ = new Button(qtTrId("about.restart_now"), ButtonKind::bordered, ButtonSize::small);
    restartPrompt_ = new QWidget;
    QHBoxLayout *line = lineLayout(restartPrompt_, footerGap);
    line->addWidget(new SymbolLabel(u"arrow.clockwise.circle.fill"_s, promptSymbolSize, TextColor::orange));
    line->addWidget(text, 1);
    line->addWidget(restart_);

    languageFooter_ = new QWidget;
    QVBoxLayout *column = columnLayout(languageFooter_);
    column->addWidget(systemHint_, 0, Qt::AlignTop);
    column->addWidget(restartPrompt_);
    return languageFooter_;
}

// Rows keep their height whatever they show, so that nothing jumps when a check ends or a language is chosen.
void AboutTab::keepHeights() {
    updateRow_->setMinimumHeight(check_->sizeHint().height() + updateRowGap +
                                 lastChecked_->sizeHint().height());
    languageFooter_->setMinimumHeight(restart_->sizeHint().height());
}

void AboutTab::changeEvent(QEvent *event) {
    if (event->type() == QEvent::FontChange)
        keepHeights();
    QWidget::changeEvent(event);
}

void AboutTab::render(const AboutModel &model) {
    if (shown_ == model)
        return;
    shown_ = model;
    version_->setText(model.version);
    version_->setVisible(!model.version.isEmpty());
    if (model.banner)
        banner_->render(*model.banner);
    banner_->setVisible(model.banner.has_value());

    checkStatus_->setSymbol(model.checkStatus.symbol);
    checkStatus_->symbol().setColor(model.checkStatus.symbolColor);
    checkStatus_->setText(model.checkStatus.text);
    checkStatus_->text().setColor(model.checkStatus.textColor);
    check_->setEnabled(!model.isChecking);
    check_->setBusy(model.isChecking);
    lastChecked_->setText(model.lastChecked);
    lastChecked_->setVisible(!model.lastChecked.isEmpty());

    language_->setCurrent(static_cast<int>(model.language));
    systemHint_->setVisible(!model.isRestartPending);
    restartPrompt_->setVisible(model.isRestartPending);
}

void AboutTab::showState() {
    AboutInput input{.bundleVersion = bundleVersion_,
                     .currentVersion = updater_.currentVersion(),
                     .languages = {},
                     .storedLanguage = services_.storedLanguage(),
                     .isRestartPending = isRestartPending_};
    for (const AboutServices::Language &language : services_.languages)
        input.languages << language.storedValue;
    render(aboutModel(updater_.state(), input, formats_));
}

void AboutTab::pickLanguage(int index) {
    const QString picked = services_.languages.at(static_cast<std::size_t>(index)).storedValue;
    if (picked == services_.storedLanguage())
        return;
    services_.chooseLanguage(picked);
    isRestartPending_ = true;
    showState();
}

void AboutTab::openInBrowser() {
    if (shown_.banner && shown_.banner->browserAddress)
        services_.openAddress(*shown_.banner->browserAddress);
}

} // namespace quorbit
