#include "settings/pairing/PairSheetView.h"

#include "daemon/Daemon.h"
#include "settings/TellAnswer.h"
#include "ui/controls/Button.h"
#include "ui/controls/SegmentedPicker.h"
#include "ui/look/Layouts.h"
#include "ui/text/IconLabel.h"
#include "ui/text/SelectableText.h"
#include "ui/text/TextField.h"
#include "ui/text/TextLabel.h"
#include "wording/DisplayLine.h"

#include <QCoreApplication>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace quorbit {

using namespace pairsheet;

namespace {

constexpr int itemGap = 16;
constexpr int bodyGap = 12;
constexpr double pinSpacing = 8;

TextLabel *hintLabel(const QString &text) {
    return wrapping(new TextLabel(text, TextStyle::callout, TextColor::secondary));
}

} // namespace

PairSheetView::PairSheetView(Daemon &daemon, Clock &clock, QWidget *parent)
    : QWidget(parent)
    , daemon_(daemon)
    , clock_(clock)
    , mode_(new SegmentedPicker)
    , done_(new Button(qtTrId("devices.add.done"), ButtonKind::prominent))
    , showPage_(makeShowPage())
    , connectPage_(makeConnectPage()) {
    auto *title = new TextLabel(qtTrId("devices.add.title"), TextStyle::title3, TextColor::primary);
    title->setHeading();
    mode_->setOptions({qtTrId("devices.add.mode.show"), qtTrId("devices.add.mode.connect")});
    mode_->setCurrent(static_cast<int>(shown_.mode));
    QVBoxLayout *column = columnLayout(this, itemGap);
    column->addWidget(title);
    column->addWidget(mode_);
    column->addWidget(showPage_);
    column->addWidget(connectPage_);
    column->addStretch();
    column->addWidget(done_, 0, Qt::AlignTrailing);

    pinBlock_->hide();
    failed_->hide();
    connectPage_->hide();
    connect_->setEnabled(false);
    state_.deviceCount = daemon_.state().devices.size();
    render(state_);
    connectControls();
}

PairSheetView::~PairSheetView() = default;

QWidget *PairSheetView::makeShowPage() {
    generate_ = new Button(qtTrId("devices.add.show.generate"), ButtonKind::prominent);
    pin_ = new SelectableText(TextStyle::display, TextColor::primary, true);
    pin_->setLetterSpacing(pinSpacing);
    pin_->setAlignment(Qt::AlignCenter);
    pin_->setAccessibleName(qtTrId("devices.add.connect.pin"));
    waiting_ = new IconLabel(u"clock"_s, qtTrId("devices.add.show.waiting"), TextStyle::callout,
                             TextColor::secondary);
    pinBlock_ = new QWidget;
    QVBoxLayout *block = columnLayout(pinBlock_, bodyGap);
    block->addWidget(pin_);
    block->addWidget(waiting_);

    auto *page = new QWidget;
    QVBoxLayout *column = columnLayout(page, bodyGap);
    column->addWidget(hintLabel(qtTrId("devices.add.show.hint")));
    column->addWidget(generate_, 0, Qt::AlignLeading);
    column->addWidget(pinBlock_);
    return page;
}

QWidget *PairSheetView::makeConnectPage() {
    host_ = new TextField(qtTrId("devices.add.connect.host"));
    host_->setInputMethodHints(Qt::ImhNoAutoUppercase | Qt::ImhNoPredictiveText);
    inputPin_ = new TextField(qtTrId("devices.add.connect.pin"));
    for (TextField *field : {host_, inputPin_})
        field->setAccessibleName(field->placeholderText());
    failed_ = new IconLabel(u"xmark.circle"_s, qtTrId("devices.add.connect.failed"), TextStyle::caption,
                            TextColor::red);
    connect_ = new Button(qtTrId("devices.add.connect.submit"), ButtonKind::prominent);

    auto *page = new QWidget;
    QVBoxLayout *column = columnLayout(page, bodyGap);
    column->addWidget(hintLabel(qtTrId("devices.add.connect.hint")));
    column->addWidget(host_);
    column->addWidget(inputPin_);
    column->addWidget(failed_);
    column->addWidget(connect_, 0, Qt::AlignLeading);
    return page;
}

void PairSheetView::connectControls() {
    connect(mode_, &SegmentedPicker::picked, this,
            [this](int index) { handle(event::ModeChosen{static_cast<Mode>(index)}); });
    connect(generate_, &Button::clicked, this, [this] { handle(event::GeneratePressed{}); });
    // Assistive technology edits a field without a key, which only textChanged() tells; it also tells what
    // render() sets.
    connect(host_, &QLineEdit::textChanged, this, [this](const QString &text) {
        if (text != shown_.host)
            handle(event::HostEdited{text});
    });
    connect(inputPin_, &QLineEdit::textChanged, this, [this](const QString &text) {
        if (text != shown_.inputPin)
            handle(event::PinEdited{text});
    });
    connect(connect_, &Button::clicked, this, [this] { handle(event::ConnectPressed{}); });
    connect(done_, &Button::clicked, this, [this] { handle(event::DonePressed{}); });
}

void PairSheetView::showState() {
    handle(event::DevicesPublished{daemon_.state().devices.size()});
}

void PairSheetView::render(const SheetState &state) {
    if (shown_ == state)
        return;
    shown_ = state;
    mode_->setCurrent(static_cast<int>(state.mode));
    showPage_->setVisible(state.mode == Mode::show);
    if (const bool connects = state.mode == Mode::connect; connects == connectPage_->isHidden()) {
        connectPage_->setVisible(connects);
        if (connects)
            host_->setFocus(Qt::OtherFocusReason);
    }

    generate_->setEnabled(canGenerate(state));
    generate_->setBusy(state.isGenerating);
    generate_->setVisible(!state.pin);
    pin_->setValue(displayLine(state.pin.value_or(QString())));
    waiting_->setSymbol(state.isPaired ? u"checkmark.circle.fill"_s : u"clock"_s);
    waiting_->setText(state.isPaired ? qtTrId("devices.add.show.paired")
                                     : qtTrId("devices.add.show.waiting"));
    waiting_->setColor(state.isPaired ? TextColor::green : TextColor::secondary);
    pinBlock_->setVisible(state.pin.has_value());

    host_->setValue(state.host);
    inputPin_->setValue(state.inputPin);
    failed_->setVisible(state.hasFailed);
    connect_->setEnabled(canConnect(state));
    connect_->setBusy(state.isBusy);
}

void PairSheetView::handle(const Event &event) {
    auto [state, effect] = reduced(std::move(state_), event);
    state_ = std::move(state);
    render(state_);
    if (effect)
        std::visit([this](const auto &each) { perform(each); }, *effect);
}

void PairSheetView::perform(const effect::RequestPin & /*effect*/) {
    tellAnswer(daemon_.pairShow(), this,
               [this](std::optional<QString> pin) { handle(event::PinAnswered{std::move(pin)}); });
}

void PairSheetView::perform(const effect::Connect &effect) {
    tellAnswer(daemon_.pairConnect(effect.host, effect.pin), this,
               [this](bool isPaired) { handle(event::ConnectAnswered{isPaired}); });
}

void PairSheetView::perform(const effect::Dismiss &effect) {
    if (effect.after == std::chrono::milliseconds::zero())
        Q_EMIT finished();
    else
        closing_ = clock_.after(effect.after, [this] { Q_EMIT finished(); });
}

} // namespace quorbit
