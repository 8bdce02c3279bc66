#pragma once

#include "ui/access/Accessibility.h"
#include "ui/look/TextColor.h"

#include <QBasicTimer>
#include <QWidget>

namespace quorbit {

/// A small spinner for work of unknown length. It turns while it is seen and stands still when motion is
/// reduced.
class ProgressIndicator final : public QWidget, public AccessibleControl {
    Q_OBJECT

public:
    explicit ProgressIndicator(TextColor color = TextColor::secondary, QWidget *parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }
    QAccessible::Role accessibleRole() const override { return QAccessible::ProgressBar; }
    void addAccessibleState(QAccessible::State &state) const override { state.busy = true; }

protected:
    void paintEvent(QPaintEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void timerEvent(QTimerEvent *event) override;

private:
    TextColor color_;
    int step_ = 0;
    QBasicTimer timer_;
};

} // namespace quorbit
