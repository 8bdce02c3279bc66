#pragma once

#include "ui/text/StyledLineEdit.h"

namespace quorbit {

/// One line of plain text that can be selected and copied, by mouse and by keyboard.
class SelectableText final : public StyledLineEdit {
    Q_OBJECT

public:
    SelectableText(TextStyle style, TextColor color, bool monospaced, QWidget *parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
};

} // namespace quorbit
