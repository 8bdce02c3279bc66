#pragma once

#include "menubar/MenuBarModel.h"
#include "ui/access/Accessibility.h"
#include "ui/access/KeyboardArea.h"
#include "ui/form/RowList.h"

#include <memory>

class QVBoxLayout;

namespace quorbit {

class FooterRow;
class HistoryRow;
class MenuRow;
class PanelHeader;
class Switch;

/// The panel under the tray icon. Its width is fixed and its height follows from what it shows; the window
/// around it belongs to its owner. It keeps nothing of the service's state: the controls only ask, and show
/// what render() is told.
class MenuBarView final : public KeyboardArea, public AccessibleControl {
    Q_OBJECT

public:
    explicit MenuBarView(QWidget *parent = nullptr);
    ~MenuBarView() override;

    /// Shows `model`; costs one comparison when that is what is shown already.
    void render(const MenuBarModel &model);

    QAccessible::Role accessibleRole() const override { return QAccessible::Grouping; }
    bool isAccessibleLeaf() const override { return false; }
    /// The panel has the focus until the user chooses a row.
    void addAccessibleState(QAccessible::State &state) const override { state.focusable = true; }

Q_SIGNALS:
    void pauseRequested(bool pause);
    /// A history entry is to be put back on the clipboard.
    void historyChosen(qint64 id);
    /// The badge of an available update was chosen.
    void updateRequested();
    void settingsRequested();
    void quitRequested();

protected:
    bool event(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    QWidget *makePauseRow();
    QWidget *makeHistoryBlock();
    void addFooter(QVBoxLayout *stack);
    HistoryRow *makeHistoryRow(const HistoryItem &model);
    void updateTabOrder();
    void updateHeight();
    void passPointerOn();

    MenuBarModel shown_;
    PanelHeader *header_;
    QWidget *infoBlock_;
    QVBoxLayout *infoLayout_;
    RowList<MenuRow> infoRows_;
    Switch *pauseSwitch_;
    QVBoxLayout *historyLayout_;
    RowList<HistoryRow> historyRows_;
    QWidget *historyBlock_;
    FooterRow *settingsRow_;
    FooterRow *quitRow_;
};

} // namespace quorbit
