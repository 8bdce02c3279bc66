#pragma once

#include "ui/TextStyle.h"
#include "ui/Theme.h"

#include <QLineEdit>

namespace quorbit {

/// One line of plain text that can be selected and copied, by mouse and by keyboard.
class SelectableText final : public QLineEdit {
    Q_OBJECT

public:
    SelectableText(TextStyle style, TextColor color, bool monospaced, QWidget *parent = nullptr);

    /// Keeps the selection when the text is the same.
    void setValue(const QString &text);
    /// Extra space between characters, in pixels at the default font size.
    void setLetterSpacing(double pixels);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void changeEvent(QEvent *event) override;
    bool event(QEvent *event) override;

private:
    void restyle();

    TextStyle style_;
    TextColor color_;
    bool monospaced_;
    double letterSpacing_ = 0;
    bool restyling_ = false;
};

} // namespace quorbit
