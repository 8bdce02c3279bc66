#include "settings/devices/DevicesTab.h"

#include "daemon/Daemon.h"
#include "settings/devices/DeviceRow.h"
#include "settings/pairing/PairSheetView.h"
#include "ui/controls/Button.h"
#include "ui/form/Form.h"
#include "ui/look/Layouts.h"
#include "ui/look/Theme.h"
#include "ui/overlay/Alert.h"
#include "ui/overlay/Sheet.h"
#include "ui/text/Divider.h"
#include "ui/text/SymbolLabel.h"
#include "ui/text/TextLabel.h"
#include "wording/TextRules.h"
#include "wording/TimeFormats.h"

#include <QCoreApplication>
#include <QPainter>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace quorbit {

namespace {

constexpr double emptySymbolSize = 42;
constexpr int emptyGap = 10;
constexpr int emptyButtonGap = 4;
constexpr int emptyTextWidth = 340;
constexpr int windowMargin = 20;
constexpr int footerPadding = 12;
constexpr int footerGap = 8;
constexpr QSize pairSheetSize(400, 340);

/// Draws a hairline between its rows.
class RowArea final : public QWidget {
protected:
    void paintEvent(QPaintEvent * /*event*/) override {
        QPainter painter(this);
        for (int place = 1; place < layout()->count(); ++place)
            painter.fillRect(QRect(0, layout()->itemAt(place)->geometry().y(), width(), 1),
                             themeColors(palette()).separator);
    }
};

} // namespace

DevicesTab::DevicesTab(Daemon &daemon, const TimeFormats &formats, Clock &clock, QWidget *parent)
    : SettingsTab(parent)
    , daemon_(daemon)
    , formats_(formats)
    , clock_(clock)
    , rowsLayout_(columnLayout())
    , rows_(rowsLayout_)
    , more_(new TextLabel(TextStyle::caption, TextColor::secondary))
    , emptyPage_(makeEmptyPage())
    , listPage_(makeListPage()) {
    QVBoxLayout *pages = columnLayout(this);
    pages->addWidget(emptyPage_);
    pages->addWidget(listPage_);
    listPage_->hide();
}

DevicesTab::~DevicesTab() {
    delete alert_;
    delete sheet_;
}

Button *DevicesTab::makeAddButton() {
    auto *add = new Button(qtTrId("devices.add"), ButtonKind::prominent);
    add->setSymbol(u"plus"_s);
    connect(add, &Button::clicked, this, &DevicesTab::openPairSheet);
    return add;
}

QWidget *DevicesTab::makeEmptyPage() {
    auto *title = new TextLabel(qtTrId("devices.empty.title"), TextStyle::body, TextColor::secondary);
    auto *hint = new TextLabel(qtTrId("devices.empty.hint"), TextStyle::caption, TextColor::tertiary);
    for (TextLabel *text : {title, hint}) {
        wrapping(text);
        text->setAlignment(Qt::AlignCenter);
        text->setMaximumWidth(scaled(emptyTextWidth, font()));
    }
    auto *page = new QWidget;
    auto *column = new QVBoxLayout(page);
    column->setContentsMargins(windowMargin, windowMargin, windowMargin, windowMargin);
    column->setSpacing(emptyGap);
    column->addStretch();
    column->addWidget(new SymbolLabel(u"laptopcomputer.slash"_s, emptySymbolSize, TextColor::tertiary), 0,
                      Qt::AlignHCenter);
    for (TextLabel *text : {title, hint}) {
        auto *line = new QHBoxLayout;
        line->addWidget(text);
        column->addLayout(line);
    }
    column->addSpacing(emptyButtonGap);
    column->addWidget(makeAddButton(), 0, Qt::AlignHCenter);
    column->addStretch();
    return page;
}

QWidget *DevicesTab::makeListPage() {
    auto *area = new RowArea;
    area->setLayout(rowsLayout_);
    area->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    auto *list = new Form;
    list->addSection(area);
    list->addSection(more_);

    const auto makeHint = [] {
        return wrapping(
            new TextLabel(qtTrId("devices.footer.hint"), TextStyle::caption, TextColor::tertiary));
    };
    hint_ = makeHint();
    hintBelowRows_ = makeHint();
    hintBelowRows_->hide();
    list->addSection(hintBelowRows_);
    add_ = makeAddButton();
    auto *footer = new QHBoxLayout;
    footer->setContentsMargins(windowMargin, footerPadding, windowMargin, windowMargin);
    footer->setSpacing(footerGap);
    footer->addWidget(hint_, 1);
    footer->addWidget(add_, 0, Qt::AlignTrailing);

    auto *page = new QWidget;
    QVBoxLayout *column = columnLayout(page);
    column->addWidget(list, 1);
    column->addWidget(new Divider);
    column->addLayout(footer);
    return page;
}

/// At large fonts the hint would take the rows' room, so it stands below them and scrolls with them.
void DevicesTab::placeHint() {
    const QSize button = add_->sizeHint();
    const int room = width() - 2 * windowMargin - footerGap - button.width();
    const bool fits = hint_->heightForWidth(std::max(room, 1)) <= button.height();
    hint_->setVisible(fits);
    hintBelowRows_->setVisible(!fits);
}

void DevicesTab::resizeEvent(QResizeEvent *) {
    placeHint();
}

DeviceRow *DevicesTab::makeRow(const DevicesModel::Row &model) {
    auto *row = new DeviceRow(model, rowsLayout_->parentWidget());
    connect(row, &DeviceRow::removeRequested, this, [this, row] { askToUnpair(row->deviceId()); });
    return row;
}

void DevicesTab::render(const DevicesModel &model) {
    if (shown_ == model)
        return;
    shown_ = DevicesModel(model); // not in the room of a list that may have been much longer
    renderRows(model.rows);
    renderAlert(model.confirmation);
}

void DevicesTab::renderRows(const std::vector<DevicesModel::Row> &rows) {
    const bool isChanged = rows_.render(rows, [this](const DevicesModel::Row &row) { return makeRow(row); });
    emptyPage_->setVisible(rows.empty());
    listPage_->setVisible(!rows.empty());
    more_->setText(moreNotShown(rows_.rest()));
    more_->setVisible(rows_.rest() > 0);
    if (!isChanged)
        return;
    // New rows join the end of the focus chain, wherever they stand.
    QWidget *previous = nullptr;
    for (DeviceRow *row : rows_.rows()) {
        if (previous)
            setTabOrder(previous, row->firstFocusStop());
        setTabOrder(row->firstFocusStop(), row->lastFocusStop());
        previous = row->lastFocusStop();
    }
    if (previous)
        setTabOrder(previous, add_);
    rowsLayout_->parentWidget()->update(); // the hairlines
}

void DevicesTab::renderAlert(const std::optional<DevicesModel::Confirmation> &confirmation) {
    if (!confirmation || alert_)
        return;
    alert_ = new Alert({.title = qtTrId("devices.unpair.title"),
                        .message = confirmation->message,
                        .cancel = qtTrId("common.cancel"),
                        .confirm = qtTrId("devices.unpair.confirm")},
                       this);
    connect(alert_, &Alert::confirmed, this, [this, id = confirmation->deviceId] { daemon_.unpair(id); });
    connect(alert_, &Alert::dismissed, this, [this] {
        alert_.clear();
        pendingUnpair_.reset();
        showState();
    });
    alert_->open();
}

void DevicesTab::showState() {
    const auto now = static_cast<qint64>(std::floor(clock_.now() * 1000));
    render(devicesModel(daemon_.state(), pendingUnpair_, now, formats_));
    keepTimesCurrent(now);
    if (sheet_)
        pairing_->showState();
}

void DevicesTab::keepTimesCurrent(qint64 now) {
    timesExpire_.reset();
    if (const auto holds = devicesModelHoldsFor(daemon_.state(), now))
        timesExpire_ = clock_.after(*holds, [this] { showState(); });
}

void DevicesTab::hideEvent(QHideEvent *event) {
    timesExpire_.reset();
    SettingsTab::hideEvent(event);
}

void DevicesTab::askToUnpair(const QString &deviceId) {
    const std::vector<Device> &devices = daemon_.state().devices;
    const auto found = std::find_if(devices.begin(), devices.end(),
                                    [&](const Device &device) { return device.device_id == deviceId; });
    if (found == devices.end())
        return;
    pendingUnpair_ = *found;
    showState();
}

void DevicesTab::openPairSheet() {
    if (sheet_)
        return;
    sheet_ = new Sheet(qtTrId("devices.add.title"), pairSheetSize, this);
    pairing_ = new PairSheetView(daemon_, clock_);
    sheet_->content()->addWidget(pairing_);
    sheet_->setDefaultButton(pairing_->doneButton());
    connect(pairing_, &PairSheetView::finished, sheet_, &Sheet::dismiss);
    connect(sheet_, &Sheet::dismissed, this, [this] { sheet_.clear(); });
    sheet_->open();
}

} // namespace quorbit
