#pragma once

#include "ui/controls/ChoiceBar.h"

namespace quorbit {

/// The tabs of a window, a symbol over a title each, centred over a hairline.
class TabBar final : public ChoiceBar {
    Q_OBJECT

public:
    explicit TabBar(QWidget *parent = nullptr);

    QAccessible::Role accessibleRole() const override { return QAccessible::PageTabList; }
    QAccessible::Role itemRole() const override { return QAccessible::PageTab; }
    QSize itemSize(const Choice &choice) const override;
    void paintItem(QPainter &painter, const ChoiceItem &item) const override;

protected:
    void paintEvent(QPaintEvent *event) override;
};

} // namespace quorbit
