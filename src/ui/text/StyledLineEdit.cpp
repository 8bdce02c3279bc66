#include "ui/text/StyledLineEdit.h"

#include "ui/look/Inherited.h"
#include "ui/look/Theme.h"

namespace quorbit {

StyledLineEdit::StyledLineEdit(TextStyle style, TextColor color, bool monospaced, QWidget *parent)
    : QLineEdit(parent), style_(style), color_(color), monospaced_(monospaced) {
    setFrame(false);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    followInherited(this, [this] { restyle(); });
}

void StyledLineEdit::setValue(const QString &value) {
    if (value == text())
        return;
    setText(value);
    setCursorPosition(0);
    updateGeometry();
}

void StyledLineEdit::setLetterSpacing(double pixels) {
    if (pixels == letterSpacing_)
        return;
    letterSpacing_ = pixels;
    restyle();
}

void StyledLineEdit::restyle() {
    const QFont base = inheritedFont(*this);
    QFont font = textFont(style_, base, monospaced_);
    if (letterSpacing_ > 0)
        font.setLetterSpacing(QFont::AbsoluteSpacing, letterSpacing_ * fontScale(base));
    setFont(font);

    QPalette own;
    own.setColor(QPalette::Text, textColor(inheritedPalette(*this), color_));
    own.setColor(QPalette::Base, Qt::transparent);
    setPalette(own);
    updateGeometry();
}

} // namespace quorbit
