#include "settings/kvm/KvmTab.h"

#include "daemon/Daemon.h"
#include "settings/SettingsEdit.h"
#include "settings/TellAnswer.h"
#include "settings/canvas/ScreenLayoutCanvas.h"
#include "settings/kvm/AccessibilityRow.h"
#include "settings/kvm/InfoLine.h"
#include "settings/kvm/MasterFooter.h"
#include "ui/controls/MenuPicker.h"
#include "ui/controls/Switch.h"
#include "ui/form/Form.h"
#include "ui/form/FormRow.h"
#include "ui/form/FormSection.h"
#include "ui/look/Layouts.h"
#include "ui/text/IconLabel.h"
#include "ui/text/StatusDot.h"
#include "ui/text/TextLabel.h"

#include <QCoreApplication>
#include <QVBoxLayout>

#include <utility>

using namespace Qt::StringLiterals;

namespace quorbit {

namespace {

constexpr int dotGap = 8;
constexpr int tipGap = 2;

int pickerIndex(const std::optional<std::size_t> &option) {
    return option ? static_cast<int>(*option) : -1;
}

} // namespace

KvmTab::KvmTab(Daemon &daemon, KvmServices services, QWidget *parent)
    : SettingsTab(parent)
    , daemon_(daemon)
    , services_(std::move(services))
    , loading_(new FormSection)
    , sections_{makeToggleSection(), makeLayoutSection(), makeBehaviorSection(), makeAccessibilitySection(),
                makeTips()} {
    loading_->addRow(
        new FormRow(new TextLabel(qtTrId("common.loading"), TextStyle::body, TextColor::secondary)));
    auto *form = new Form;
    connect(canvas_, &ScreenLayoutCanvas::currentCardAt, form,
            [this, form](const QRect &place) { form->reveal(*canvas_, place); });
    form->addSection(loading_);
    for (FormSection *section : std::as_const(sections_)) {
        form->addSection(section);
        section->hide();
    }
    columnLayout(this)->addWidget(form);
}

KvmTab::~KvmTab() {
    // A card that was moved by keyboard stays where it was left although nobody waits for the earlier save.
    if (const auto last = canvas_->lastSave())
        save(daemon_, &DaemonSettings::kvm_layout, last->layout);
}

FormSection *KvmTab::makeToggleSection() {
    enabled_ = new Switch;
    connect(enabled_, &Switch::flipped, this, &KvmTab::enable);
    dot_ = new StatusDot;
    status_ = wrapping(new TextLabel(TextStyle::callout, TextColor::secondary));
    auto *status = new QWidget;
    QHBoxLayout *line = lineLayout(status, dotGap);
    line->addWidget(dot_);
    line->addWidget(status_, 1);
    statusRow_ = new FormRow(status);
    auto *hint = new IconLabel(u"exclamationmark.circle.fill"_s, qtTrId("kvm.restart_hint"),
                               TextStyle::caption, TextColor::orange);
    wrapping(&hint->text());
    restartHint_ = new FormRow(hint);

    auto *section = new FormSection(qtTrId("kvm.section.toggle"));
    section->addRow(new FormRow(qtTrId("kvm.enable"), enabled_));
    for (FormRow *row : {statusRow_, restartHint_}) {
        section->addRow(row);
        row->hide();
    }
    return section;
}

FormSection *KvmTab::makeLayoutSection() {
    canvas_ = new ScreenLayoutCanvas(this);
    connect(canvas_, &ScreenLayoutCanvas::arranged, this, &KvmTab::saveLayout);
    connect(canvas_, &ScreenLayoutCanvas::masterPicked, this,
            [this](const QString &id) { save(daemon_, &DaemonSettings::kvm_master_id, id); });
    canvasRow_ = new FormRow(canvas_);
    canvasRow_->hide();
    noPeerRow_ = new FormRow(
        wrapping(new TextLabel(qtTrId("kvm.canvas.no_peer"), TextStyle::body, TextColor::secondary)));
    masterFooter_ = new MasterFooter;

    auto *section = new FormSection(qtTrId("kvm.section.layout"));
    section->addRow(canvasRow_);
    section->addRow(noPeerRow_);
    section->setFooterWidget(masterFooter_);
    return section;
}

template <class Value>
MenuPicker *KvmTab::makePicker(const std::vector<PickerOption<Value>> &options,
                               std::optional<Value> DaemonSettings::*member) {
    QStringList labels;
    for (const PickerOption<Value> &option : options)
        labels << option.label;
    auto *picker = new MenuPicker;
    picker->setOptions(labels);
    connect(picker, &MenuPicker::picked, this, [this, options, member](int index) {
        save(daemon_, member, options.at(static_cast<std::size_t>(index)).value);
    });
    return picker;
}

FormSection *KvmTab::makeBehaviorSection() {
    swap_ = new Switch;
    connect(swap_, &Switch::flipped, this,
            [this](bool wanted) { save(daemon_, &DaemonSettings::kvm_swap_modifiers, wanted); });
    switchDelay_ = makePicker(switchDelayOptions(), &DaemonSettings::kvm_switch_delay_ms);
    cornerSize_ = makePicker(cornerSizeOptions(), &DaemonSettings::kvm_corner_size);
    sensitivity_ = makePicker(sensitivityOptions(), &DaemonSettings::kvm_sensitivity);

    auto *section = new FormSection(qtTrId("kvm.section.behavior"));
    section->addRow(new FormRow(qtTrId("kvm.swap_modifiers"), swap_));
    section->addRow(new FormRow(qtTrId("kvm.switch_delay"), switchDelay_));
    section->addRow(new FormRow(qtTrId("kvm.corner_size"), cornerSize_));
    section->addRow(new FormRow(qtTrId("kvm.sensitivity"), sensitivity_));
    section->setFooter(qtTrId("kvm.behavior.footer"));
    return section;
}

FormSection *KvmTab::makeAccessibilitySection() {
    accessibility_ = new AccessibilityRow;
    connect(accessibility_, &AccessibilityRow::grantRequested, this, &KvmTab::requestAuthorization);
    connect(accessibility_, &AccessibilityRow::restartRequested, this, [this] { services_.restart(); });
    auto *section = new FormSection(qtTrId("kvm.section.accessibility"));
    section->addRow(new FormRow(accessibility_));
    return section;
}

FormSection *KvmTab::makeTips() {
    auto *tips = new QWidget;
    QVBoxLayout *column = columnLayout(tips, tipGap);
    column->addWidget(new InfoLine(u"cursorarrow.motionlines"_s, qtTrId("kvm.tip.edge_switch")));
    column->addWidget(new InfoLine(u"keyboard"_s, qtTrId("kvm.tip.escape_hotkey")));
    column->addWidget(new InfoLine(u"lock"_s, qtTrId("kvm.tip.lock_hotkey")));
    column->addWidget(new InfoLine(u"arrow.uturn.left"_s, qtTrId("kvm.tip.reverse")));
    column->addWidget(new InfoLine(u"magnifyingglass.circle"_s, qtTrId("kvm.tip.mdns")));
    auto *section = new FormSection;
    section->addRow(new FormRow(tips));
    return section;
}

void KvmTab::saveLayout(const ScreenLayout &layout, int number) {
    const auto record = edited(daemon_.state().settings, &DaemonSettings::kvm_layout, layout);
    if (!record)
        return canvas_->saveEnded(number, false);
    tellOutcome(daemon_.saveSettings(*record), this,
                [this, number](const std::optional<UpdateResult> &answer) {
                    showState(); // or the card would go back until the tab is shown what came with the answer
                    canvas_->saveEnded(number, answer.has_value());
                });
}

void KvmTab::enable(bool wanted) {
    const auto record = edited(daemon_.state().settings, &DaemonSettings::kvm_enabled, wanted);
    if (!record)
        return;
    tellAnswer(daemon_.saveSettings(*record), this, [this](const UpdateResult &result) {
        showsRestartHint_ = showsRestartHint_ || result.need_restart.value_or(false);
        showState();
    });
}

void KvmTab::requestAuthorization() {
    daemon_.promptAccessibility();
    services_.openAccessibilitySettings();
}

void KvmTab::showState() {
    render(kvmModel(daemon_.state(), services_.isAccessibilityTrusted(), showsRestartHint_));
}

void KvmTab::render(const std::optional<KvmModel> &model) {
    if (shown_ == model)
        return;
    shown_ = model;
    if (model) {
        renderStatus(*model);
        renderLayout(*model);
        swap_->setOn(model->swapsModifiers);
        switchDelay_->setCurrent(pickerIndex(model->switchDelay));
        cornerSize_->setCurrent(pickerIndex(model->cornerSize));
        sensitivity_->setCurrent(pickerIndex(model->sensitivity));
        accessibility_->render(model->accessibility);
    }
    // Last, so that no switch is seen to slide to where it has been all along.
    loading_->setVisible(!model);
    for (FormSection *section : std::as_const(sections_))
        section->setVisible(model.has_value());
}

void KvmTab::renderStatus(const KvmModel &model) {
    enabled_->setOn(model.isEnabled);
    if (const auto &line = model.statusLine) {
        dot_->setColor(line->dot);
        status_->setText(line->text);
    }
    statusRow_->setVisible(model.statusLine.has_value());
    restartHint_->setVisible(model.showsRestartHint);
}

void KvmTab::renderLayout(const KvmModel &model) {
    if (const auto &canvas = model.canvas)
        canvas_->render(canvas->desk, canvas->masterID);
    canvasRow_->setVisible(model.canvas.has_value());
    noPeerRow_->setVisible(!model.canvas);
    masterFooter_->render(model.masterFooter);
}

} // namespace quorbit
