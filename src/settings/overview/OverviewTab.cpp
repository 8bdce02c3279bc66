#include "settings/overview/OverviewTab.h"

#include "daemon/Daemon.h"
#include "ui/form/Card.h"
#include "ui/form/Form.h"
#include "ui/form/FormRow.h"
#include "ui/form/FormSection.h"
#include "ui/look/Layouts.h"
#include "ui/text/SelectableText.h"
#include "ui/text/StatusDot.h"
#include "ui/text/TextField.h"
#include "ui/text/TextLabel.h"
#include "wording/TextRules.h"

#include <QCoreApplication>
#include <QHideEvent>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace quorbit {

namespace {

constexpr int dotGap = 6;

SelectableText *identifier(TextStyle style) {
    auto *text = new SelectableText(style, TextColor::secondary, true);
    text->setAlignment(Qt::AlignTrailing |
                       Qt::AlignVCenter); // for a row may give it more width than it needs
    return text;
}

} // namespace

PeerRow::PeerRow(const OverviewModel::Peer &model, QWidget *parent)
    : QWidget(parent), deviceId_(model.deviceId) {
    auto *value = identifier(TextStyle::caption);
    value->setValue(model.shownId);
    row_ = new FormRow(model.label, value);
    row_->setSymbol(u"laptopcomputer"_s);
    columnLayout(this)->addWidget(row_);
}

void PeerRow::render(const OverviewModel::Peer &model) {
    row_->setLabel(model.label);
}

OverviewTab::OverviewTab(Daemon &daemon, QWidget *parent)
    : SettingsTab(parent)
    , daemon_(daemon)
    , peersSection_(new FormSection(qtTrId("overview.section.peers")))
    , peers_(peersSection_->card().rows()) {
    auto *form = new Form;
    columnLayout(this)->addWidget(form);

    auto *computer = new FormSection(qtTrId("overview.section.local"));
    addComputer(computer);
    noPeers_ =
        new FormRow(new TextLabel(qtTrId("overview.peers.empty"), TextStyle::body, TextColor::secondary));
    peersSection_->addRow(noPeers_);
    activity_ = new FormSection(qtTrId("overview.section.activity"));
    lastActivity_ = wrapping(new TextLabel(TextStyle::body, TextColor::secondary));
    activity_->addRow(new FormRow(lastActivity_));
    for (FormSection *section : {computer, peersSection_, activity_})
        form->addSection(section);
    activity_->hide();

    // Assistive technology edits a field without a key, which only textChanged() tells; it also tells what
    // render() sets.
    connect(name_, &QLineEdit::textChanged, this, [this](const QString &text) {
        if (!draft_ || text == draft_->text)
            return;
        draft_->text = text;
        showState();
    });
    connect(name_, &TextField::submitted, this, &OverviewTab::commitName);
}

void OverviewTab::addComputer(FormSection *section) {
    name_ = new TextField;
    deviceId_ = identifier(TextStyle::body);
    port_ = new TextLabel(TextStyle::body, TextColor::secondary);
    port_->setMonospaced(true);
    dot_ = new StatusDot;
    status_ = new TextLabel;
    auto *status = new QWidget;
    QHBoxLayout *statusLine = lineLayout(status, dotGap);
    statusLine->addWidget(dot_);
    statusLine->addWidget(status_);

    section->addRow(new FormRow(qtTrId("overview.device_name"), name_));
    identityRows_ = {new FormRow(qtTrId("overview.device_id"), deviceId_),
                     new FormRow(qtTrId("overview.port"), port_),
                     new FormRow(qtTrId("overview.status"), status)};
    for (QWidget *row : std::as_const(identityRows_)) {
        section->addRow(row);
        row->hide();
    }
}

void OverviewTab::hideEvent(QHideEvent *event) {
    if (!event->spontaneous()) // it is when the window is minimized
        draft_.reset();
    SettingsTab::hideEvent(event);
}

void OverviewTab::showState() {
    draft_ = draft_ ? followedNameDraft(*draft_, daemon_.state()) : shownNameDraft(daemon_.state());
    render(overviewModel(daemon_.state(), *draft_));
}

void OverviewTab::commitName() {
    // A save that fails is not shown: the field keeps what was typed.
    if (const auto wanted = committedName(daemon_.state(), name_->text()))
        daemon_.saveSettings(*wanted);
}

void OverviewTab::render(const OverviewModel &model) {
    if (shown_ == model)
        return;
    shown_ = OverviewModel(model); // not in the room of a list that may have been much longer
    name_->setValue(model.draftName);
    renderIdentity(model.identity);
    peers_.render(model.peers, [this](const OverviewModel::Peer &peer) { return new PeerRow(peer, this); });
    peersSection_->setFooter(moreNotShown(peers_.rest()));
    noPeers_->setVisible(model.peers.empty());
    activity_->setVisible(model.lastActivity.has_value());
    lastActivity_->setText(model.lastActivity.value_or(QString()));
}

void OverviewTab::renderIdentity(const std::optional<OverviewModel::Identity> &identity) {
    for (QWidget *row : std::as_const(identityRows_))
        row->setVisible(identity.has_value());
    if (!identity)
        return;
    deviceId_->setValue(identity->deviceId);
    port_->setText(identity->port);
    dot_->setColor(identity->isPaused ? TextColor::orange : TextColor::green);
    status_->setText(identity->statusText);
}

} // namespace quorbit
