#pragma once

#include "ui/look/TextColor.h"
#include "ui/look/TextStyle.h"

#include <QLineEdit>

namespace quorbit {

/// A line edit without a look of its own, in one of the text styles, that follows its parent's font and
/// palette.
class StyledLineEdit : public QLineEdit {
    Q_OBJECT

public:
    StyledLineEdit(TextStyle style, TextColor color, bool monospaced, QWidget *parent);

    /// Shows `value`; the same value leaves selection and cursor alone.
    void setValue(const QString &value);
    /// Extra space between characters, in pixels at the default font size.
    void setLetterSpacing(double pixels);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void restyle();

    TextStyle style_;
    TextColor color_;
    bool monospaced_;
    double letterSpacing_ = 0;
};

} // namespace quorbit
