#pragma once

#include "ui/text/StyledLineEdit.h"

namespace quorbit {

/// A field for one line of text. It emits submitted() on Return, once however long the key
/// is held, and textEdited() as the user types.
class TextField final : public StyledLineEdit {
    Q_OBJECT

public:
    explicit TextField(const QString &placeholder = {}, QWidget *parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    void submitted();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
};

} // namespace quorbit
