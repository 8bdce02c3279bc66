#pragma once

#include "app/windows/PanelPlacement.h"
#include "ui/access/Accessibility.h"

#include <QElapsedTimer>
#include <QWidget>

#include <functional>
#include <optional>

class QScrollArea;

namespace quorbit {

/// The window around the panel: it drops down beside the tray icon and hides by itself, or, where there is no
/// tray, is a window like others. Its size follows the content's.
class PanelWindow : public QWidget, public AccessibleControl {
    Q_OBJECT

public:
    /// Takes over `content`, whose own size decides. `isBlended` tells whether a translucent window is
    /// blended with what lies behind it now.
    PanelWindow(QWidget *content, std::function<bool()> isBlended);
    ~PanelWindow() override;

    /// Drops down beside `icon`, or beside the pointer when that is empty.
    void dropDown(const QRect &icon);
    /// What a click on the icon does: opens the panel, or closes it if it is open.
    void toggle(const QRect &icon);
    /// Shows it as an ordinary window with a title and an entry in the task bar.
    void showAsWindow();

    QAccessible::Role accessibleRole() const override { return QAccessible::Window; }
    bool isAccessibleLeaf() const override { return false; }

protected:
    bool event(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    bool isOrdinaryWindow() const { return !anchor_; }
    void dismiss();
    void fit();
    void roundCorners();

    QWidget *content_;
    QScrollArea *scroller_;
    std::function<bool()> isBlended_;
    std::optional<PanelAnchor> anchor_; ///< absent for an ordinary window
    QRect available_;                   ///< around the anchor
    bool hasFocus_ = false;
    QElapsedTimer sinceFocusWasLost_;
};

} // namespace quorbit
