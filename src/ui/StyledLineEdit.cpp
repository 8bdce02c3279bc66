#include "ui/StyledLineEdit.h"

#include <QApplication>
#include <QEvent>

namespace quorbit {

StyledLineEdit::StyledLineEdit(TextStyle style, TextColor color, bool monospaced, QWidget *parent)
    : QLineEdit(parent), style_(style), color_(color), monospaced_(monospaced) {
    setFrame(false);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    restyle();
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
    // Setting font and palette reports changes of its own, which need no answer.
    restyling_ = true;
    const QFont base = QApplication::font(this);
    QFont font = textFont(style_, base, monospaced_);
    if (letterSpacing_ > 0)
        font.setLetterSpacing(QFont::AbsoluteSpacing, letterSpacing_ * fontScale(base));
    setFont(font);

    const QPalette inherited =
        parentWidget() != nullptr ? parentWidget()->palette() : QApplication::palette();
    QPalette own;
    own.setColor(QPalette::Text, textColor(inherited, color_));
    own.setColor(QPalette::Base, Qt::transparent);
    setPalette(own);
    restyling_ = false;
    updateGeometry();
}

void StyledLineEdit::changeEvent(QEvent *event) {
    QLineEdit::changeEvent(event);
    if (!restyling_ && event->type() == QEvent::ParentChange)
        restyle();
}

bool StyledLineEdit::event(QEvent *event) {
    const bool handled = QLineEdit::event(event);
    if (!restyling_ &&
        (event->type() == QEvent::ApplicationPaletteChange || event->type() == QEvent::ApplicationFontChange))
        restyle();
    return handled;
}

} // namespace quorbit
