#pragma once

#include "platform/Clock.h"
#include "settings/SettingsTab.h"
#include "settings/devices/DevicesModel.h"
#include "ui/form/RowList.h"

#include <QPointer>

#include <memory>
#include <optional>

class QVBoxLayout;

namespace quorbit {

class Alert;
class Button;
class Daemon;
class DeviceRow;
class PairSheetView;
class Sheet;
class TextLabel;

/// The tab of the paired computers: it lists and removes them and opens the sheet that pairs another.
class DevicesTab final : public SettingsTab {
    Q_OBJECT

public:
    /// All three must outlive the tab.
    DevicesTab(Daemon &daemon, const TimeFormats &formats, Clock &clock, QWidget *parent = nullptr);
    ~DevicesTab() override;

    /// From now on the times are kept current, until the tab is hidden.
    void showState() override;
    /// Shows `model`; costs one comparison when that is what is shown already.
    void render(const DevicesModel &model);

protected:
    void hideEvent(QHideEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    QWidget *makeEmptyPage();
    QWidget *makeListPage();
    Button *makeAddButton();
    DeviceRow *makeRow(const DevicesModel::Row &model);
    void placeHint();
    void renderRows(const std::vector<DevicesModel::Row> &rows);
    void renderAlert(const std::optional<DevicesModel::Confirmation> &confirmation);

    void keepTimesCurrent(qint64 now);
    void askToUnpair(const QString &deviceId);
    void openPairSheet();

    Daemon &daemon_;
    const TimeFormats &formats_;
    Clock &clock_;
    std::optional<Device> pendingUnpair_;
    std::unique_ptr<Clock::Alarm> timesExpire_;

    DevicesModel shown_;
    QVBoxLayout *rowsLayout_;
    RowList<DeviceRow> rows_;
    TextLabel *more_;           ///< under the list: how many devices it leaves out
    TextLabel *hint_ = nullptr; ///< in the footer
    TextLabel *hintBelowRows_ = nullptr;
    Button *add_ = nullptr; ///< the one under the list, made with it
    QWidget *emptyPage_;
    QWidget *listPage_;
    // Both cover the whole window and are its children.
    QPointer<Alert> alert_;
    QPointer<Sheet> sheet_;
    PairSheetView *pairing_ = nullptr; ///< inside the sheet
};

} // namespace quorbit
