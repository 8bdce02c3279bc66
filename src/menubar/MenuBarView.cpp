#include "menubar/MenuBarView.h"

#include "menubar/FooterRow.h"
#include "menubar/HistoryRow.h"
#include "menubar/MenuRow.h"
#include "menubar/PanelHeader.h"
#include "menubar/PanelMetrics.h"
#include "ui/controls/Switch.h"
#include "ui/look/Layouts.h"
#include "ui/text/Divider.h"
#include "ui/text/SymbolLabel.h"
#include "ui/text/TextLabel.h"

#include <QAbstractButton>
#include <QCoreApplication>
#include <QCursor>
#include <QEnterEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QShortcut>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace quorbit {

namespace {

constexpr int spaceUnderHeader = 2;
constexpr int spaceAroundDivider = 4;
constexpr int spaceUnderHistoryTitle = 2;

// The same on every system; the rows write them as QKeySequence::NativeText.
const QKeySequence settingsKeys(Qt::CTRL | Qt::Key_Comma);
const QKeySequence quitKeys(Qt::CTRL | Qt::Key_Q);

void addSpacedDivider(QVBoxLayout *stack) {
    stack->addSpacing(spaceAroundDivider);
    stack->addWidget(new Divider);
    stack->addSpacing(spaceAroundDivider);
}

} // namespace

MenuBarView::MenuBarView(QWidget *parent)
    : KeyboardArea(parent)
    , AccessibleControl(this)
    , header_(new PanelHeader(this)) // first in the focus chain
    , infoBlock_(new QWidget)
    , infoLayout_(columnLayout(infoBlock_))
    , infoRows_(infoLayout_)
    , pauseSwitch_(new Switch(Switch::Size::small))
    , historyLayout_(columnLayout())
    , historyRows_(historyLayout_)
    , historyBlock_(makeHistoryBlock()) {
    QVBoxLayout *stack = columnLayout(this);
    stack->setContentsMargins(0, panel::outerInset, 0, panel::outerInset);
    stack->addWidget(header_);
    stack->addWidget(new Divider);
    stack->addSpacing(spaceUnderHeader);
    stack->addWidget(infoBlock_);
    stack->addWidget(makePauseRow());
    stack->addWidget(historyBlock_);
    addFooter(stack);
    setFixedWidth(panel::width);
    setAccessibleName(qtTrId("common.app_name"));

    connect(header_, &PanelHeader::updateRequested, this, &MenuBarView::updateRequested);
    connect(pauseSwitch_, &Switch::flipped, this, &MenuBarView::pauseRequested);
    render(menuBarModel(ServiceState(), UpdateState()));
}

MenuBarView::~MenuBarView() = default;

QWidget *MenuBarView::makePauseRow() {
    const QString title = qtTrId("menu.pause_sync");
    auto *row = new QWidget;
    auto *text = new TextLabel(title, TextStyle::body, TextColor::primary);
    panel::takeRemainingWidth(text);
    QHBoxLayout *line = panel::rowLayout(row, panel::pauseInset);
    line->addWidget(panel::columnSymbol(u"pause.circle"_s));
    line->addWidget(text, 1);
    line->addWidget(pauseSwitch_);
    pauseSwitch_->setAccessibleName(title);
    text->setBuddy(pauseSwitch_);
    return row;
}

QWidget *MenuBarView::makeHistoryBlock() {
    auto *block = new QWidget;
    auto *title = new TextLabel(qtTrId("menu.history_header"), TextStyle::caption, TextColor::secondary);
    title->setHeading();
    auto *titleLine = new QHBoxLayout;
    titleLine->setContentsMargins(panel::sideInset, 0, panel::sideInset, spaceUnderHistoryTitle);
    titleLine->addWidget(title);
    QVBoxLayout *stack = columnLayout(block);
    addSpacedDivider(stack);
    stack->addLayout(titleLine);
    stack->addLayout(historyLayout_);
    return block;
}

void MenuBarView::addFooter(QVBoxLayout *stack) {
    settingsRow_ = new FooterRow(qtTrId("menu.settings"), settingsKeys);
    quitRow_ = new FooterRow(qtTrId("menu.quit"), quitKeys);
    addSpacedDivider(stack);
    stack->addWidget(settingsRow_);
    stack->addWidget(quitRow_);
    connect(settingsRow_, &QAbstractButton::clicked, this, &MenuBarView::settingsRequested);
    connect(quitRow_, &QAbstractButton::clicked, this, &MenuBarView::quitRequested);
    const auto bind = [this](const QKeySequence &keys, void (MenuBarView::*request)()) {
        auto *shortcut = new QShortcut(keys, this);
        shortcut->setAutoRepeat(false);
        connect(shortcut, &QShortcut::activated, this, request);
    };
    bind(settingsKeys, &MenuBarView::settingsRequested);
    bind(quitKeys, &MenuBarView::quitRequested);
}

HistoryRow *MenuBarView::makeHistoryRow(const HistoryItem &model) {
    auto *row = new HistoryRow(model, historyBlock_);
    connect(row, &QAbstractButton::clicked, this, [this, row] { Q_EMIT historyChosen(row->id()); });
    return row;
}

void MenuBarView::render(const MenuBarModel &model) {
    if (shown_ == model)
        return;
    shown_ = model;
    header_->render(model);
    infoRows_.render(model.rows,
                     [this](const MenuBarModel::InfoRow &row) { return new MenuRow(row, infoBlock_); });
    pauseSwitch_->setOn(model.isPaused);
    historyBlock_->setVisible(!model.history.empty());
    if (historyRows_.render(model.history, [this](const HistoryItem &row) { return makeHistoryRow(row); }))
        updateTabOrder();
    updateHeight();
    passPointerOn();
}

// New rows join the end of the focus chain, wherever they stand.
void MenuBarView::updateTabOrder() {
    QWidget *previous = pauseSwitch_;
    for (HistoryRow *row : historyRows_.rows()) {
        setTabOrder(previous, row);
        previous = row;
    }
    setTabOrder(previous, settingsRow_);
    setTabOrder(settingsRow_, quitRow_);
}

// Qt tells a row that the pointer has come or gone only when the pointer moves, not when the row does.
void MenuBarView::passPointerOn() {
    if (!isVisible() || !underMouse())
        return;
    const QPointF pointer = QCursor::pos();
    for (HoverRow *row : findChildren<HoverRow *>()) {
        const QPointF inRow = row->mapFromGlobal(pointer);
        const bool isUnder = row->isVisible() && row->rect().contains(inRow.toPoint());
        if (isUnder == row->underMouse())
            continue;
        row->setAttribute(Qt::WA_UnderMouse, isUnder);
        QEvent leave(QEvent::Leave);
        QEnterEvent enter(inRow, mapFromGlobal(pointer), pointer);
        QCoreApplication::sendEvent(row, isUnder ? static_cast<QEvent *>(&enter) : &leave);
    }
}

void MenuBarView::updateHeight() {
    for (QWidget *block : {infoBlock_, historyBlock_})
        block->layout()->activate(); // a layout does not do this for those of its widgets
    layout()->activate();
    const int wanted = layout()->hasHeightForWidth() ? layout()->totalHeightForWidth(panel::width)
                                                     : layout()->totalSizeHint().height();
    setFixedHeight(wanted);
}

bool MenuBarView::event(QEvent *event) {
    const bool handled = QWidget::event(event);
    if (event->type() == QEvent::LayoutRequest) // a text or the user's font has changed
        updateHeight();
    return handled;
}

void MenuBarView::keyPressEvent(QKeyEvent *event) {
    switch (event->key()) {
    case Qt::Key_Down:
        focusNextPrevChild(true);
        return;
    case Qt::Key_Up:
        focusNextPrevChild(false);
        return;
    default:
        QWidget::keyPressEvent(event);
    }
}

} // namespace quorbit
