#pragma once

#include "ui/controls/Pressable.h"

namespace quorbit {

/// The red dot that announces an update; resting the pointer on it tells which.
class UpdateBadge final : public Pressable {
    Q_OBJECT

public:
    /// How far the button reaches beyond the dot on every side, so that it is easy to hit.
    static constexpr int reach = 8;

    explicit UpdateBadge(QWidget *parent = nullptr);

    void setVersion(const QString &version);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
};

} // namespace quorbit
