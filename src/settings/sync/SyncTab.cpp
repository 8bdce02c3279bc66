#include "settings/sync/SyncTab.h"

#include "daemon/Daemon.h"
#include "settings/SettingsEdit.h"
#include "settings/sync/HistoryList.h"
#include "ui/controls/Button.h"
#include "ui/controls/Stepper.h"
#include "ui/controls/Switch.h"
#include "ui/form/Form.h"
#include "ui/form/FormRow.h"
#include "ui/form/FormSection.h"
#include "ui/look/Layouts.h"
#include "ui/text/TextField.h"
#include "ui/text/TextLabel.h"

#include <QCoreApplication>
#include <QScrollBar>
#include <QVBoxLayout>

#include <algorithm>
#include <limits>

namespace quorbit {

SyncTab::SyncTab(Daemon &daemon, QWidget *parent)
    : SettingsTab(parent)
    , daemon_(daemon)
    , form_(new Form)
    , loading_(new FormSection)
    , types_(new FormSection(qtTrId("sync.section.types")))
    , transfer_(new FormSection(qtTrId("sync.section.transfer")))
    , history_(new FormSection(qtTrId("sync.section.history"))) {
    columnLayout(this)->addWidget(form_);
    loading_->addRow(
        new FormRow(new TextLabel(qtTrId("common.loading"), TextStyle::body, TextColor::secondary)));
    for (FormSection *section : {loading_, types_, transfer_, history_})
        form_->addSection(section);
    for (FormSection *section : {types_, transfer_, history_})
        section->hide();

    text_ = addType(qtTrId("sync.type.text"), &DaemonSettings::sync_text);
    image_ = addType(qtTrId("sync.type.image"), &DaemonSettings::sync_image);
    files_ = addType(qtTrId("sync.type.files"), &DaemonSettings::sync_files);
    addTransfer();
    addHistory();
}

Switch *SyncTab::addType(const QString &title, bool DaemonSettings::*member) {
    auto *control = new Switch;
    types_->addRow(new FormRow(title, control));
    connect(control, &Switch::flipped, this, [this, member](bool wanted) { save(daemon_, member, wanted); });
    return control;
}

void SyncTab::addTransfer() {
    fileCap_ = new Stepper(smallestFileCap, largestFileCap, fileCapStep);
    auto *row = new FormRow(qtTrId("sync.file_cap.label"), fileCap_);
    auto *unit = new TextLabel(qtTrId("sync.file_cap.unit"), TextStyle::body, TextColor::secondary);
    unit->setOverflow(TextLabel::Overflow::keep);
    row->addControl(unit);
    transfer_->addRow(row);
    transfer_->setFooter(qtTrId("sync.file_cap.footer"));
    connect(fileCap_, &Stepper::stepped, this,
            [this](int wanted) { save(daemon_, &DaemonSettings::file_size_cap_mb, qint64{wanted}); });
}

void SyncTab::addHistory() {
    const QString searchTitle = qtTrId("sync.history.search");
    auto *clear = new Button(qtTrId("sync.history.clear"), ButtonKind::destructiveCaption);
    search_ = new TextField(searchTitle);
    search_->setAccessibleName(searchTitle);
    searchRow_ = new FormRow(search_);
    list_ = new HistoryList;
    list_->setAccessibleName(qtTrId("sync.section.history"));
    noMatchRow_ =
        new FormRow(new TextLabel(qtTrId("sync.history.no_match"), TextStyle::callout, TextColor::secondary));
    history_->setHeaderControl(clear);
    history_->addRow(searchRow_);
    history_->addRow(list_);
    history_->addRow(noMatchRow_);
    history_->setFooter(qtTrId("sync.history.footer"));

    connect(clear, &QAbstractButton::clicked, this, [this] { daemon_.clearHistory(); });
    connect(search_, &QLineEdit::textChanged, this, &SyncTab::showState);
    connect(list_, &HistoryList::applied, this, [this](qint64 id) { daemon_.applyHistory(id); });
    connect(list_, &HistoryList::currentRowChanged, this,
            [this](int row) { form_->reveal(*list_, list_->rowRect(row)); });
    connect(form_->verticalScrollBar(), &QScrollBar::valueChanged, list_, &HistoryList::followPointer);
}

void SyncTab::showState() {
    render(syncModel(daemon_.state(), search_->text(), filter_));
}

void SyncTab::render(const std::optional<SyncModel> &model) {
    if (shown_ == model)
        return;
    shown_ = std::optional(model); // not in the room of a list that may have been much longer
    loading_->setVisible(!model);
    types_->setVisible(model.has_value());
    transfer_->setVisible(model.has_value());
    history_->setVisible(model && model->history);
    if (!model)
        return;
    text_->setOn(model->syncsText);
    image_->setOn(model->syncsImage);
    files_->setOn(model->syncsFiles);
    fileCap_->setValue(static_cast<int>(std::clamp<qint64>(model->fileCap, std::numeric_limits<int>::min(),
                                                           std::numeric_limits<int>::max())));
    renderHistory(model->history);
}

void SyncTab::renderHistory(const std::optional<SyncModel::History> &history) {
    static const std::vector<HistoryItem> none;
    const auto &rows = history ? history->rows : none;
    searchRow_->setVisible(history && history->hasSearchField);
    noMatchRow_->setVisible(rows.empty());
    list_->setVisible(!rows.empty());
    list_->setRoundedTop(!(history && history->hasSearchField));
    list_->setRows(rows);
}

} // namespace quorbit
