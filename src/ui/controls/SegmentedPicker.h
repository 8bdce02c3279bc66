#pragma once

#include "ui/controls/ChoiceBar.h"

namespace quorbit {

/// A few options side by side, of which one is chosen.
class SegmentedPicker final : public ChoiceBar {
    Q_OBJECT

public:
    explicit SegmentedPicker(QWidget *parent = nullptr);

    void setOptions(const QStringList &titles);

    QAccessible::Role accessibleRole() const override { return QAccessible::Grouping; }
    QAccessible::Role itemRole() const override { return QAccessible::RadioButton; }
    QSize itemSize(const Choice &choice) const override;
    void paintItem(QPainter &painter, const ChoiceItem &item) const override;

protected:
    void paintEvent(QPaintEvent *event) override;
};

} // namespace quorbit
