#pragma once

#include "ui/text/StyledLineEdit.h"

namespace quorbit {

/// A field for one line of text. It emits submitted() on Return, and textEdited() as the user types.
class TextField final : public StyledLineEdit {
    Q_OBJECT

public:
    explicit TextField(const QString &placeholder = {}, QWidget *parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    void submitted();

protected:
    void paintEvent(QPaintEvent *event) override;
};

} // namespace quorbit
