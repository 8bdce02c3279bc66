#pragma once

#include "ui/controls/Pressable.h"

namespace quorbit {

/// A button over the whole rectangle of a row. Put what it shows into a layout on it and give it an
/// accessible name; it emits clicked().
class HoverRow : public Pressable {
    Q_OBJECT

public:
    explicit HoverRow(QWidget *parent = nullptr);

    QSize sizeHint() const override { return QWidget::sizeHint(); }

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void setHighlighted(bool highlighted);

    bool highlighted_ = false;
};

} // namespace quorbit
