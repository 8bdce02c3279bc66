#include "ui/SelectableText.h"

#include <QApplication>
#include <QEvent>
#include <QFontMetrics>

#include <cmath>

namespace quorbit {

SelectableText::SelectableText(TextStyle style, TextColor color, bool monospaced, QWidget *parent)
    : QLineEdit(parent), style_(style), color_(color), monospaced_(monospaced) {
    setReadOnly(true);
    setFrame(false);
    setTextMargins(0, 0, 0, 0);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    restyle();
}

void SelectableText::setValue(const QString &value) {
    if (value == text())
        return;
    setText(value);
    setCursorPosition(0);
    updateGeometry();
}

void SelectableText::setLetterSpacing(double pixels) {
    if (pixels == letterSpacing_)
        return;
    letterSpacing_ = pixels;
    restyle();
}

void SelectableText::restyle() {
    restyling_ = true;
    const QFont base = QApplication::font(this);
    QFont font = textFont(style_, base, monospaced_);
    if (letterSpacing_ > 0)
        font.setLetterSpacing(QFont::AbsoluteSpacing, letterSpacing_ * fontScale(base));
    setFont(font);

    QPalette own;
    const QPalette inherited =
        parentWidget() != nullptr ? parentWidget()->palette() : QApplication::palette();
    own.setColor(QPalette::Text, textColor(inherited, color_));
    own.setColor(QPalette::Base, Qt::transparent);
    setPalette(own);
    restyling_ = false;
    updateGeometry();
}

QSize SelectableText::sizeHint() const {
    // QLineEdit keeps two pixels at each side of its text, and the cursor needs one.
    const QFontMetrics metrics(font());
    return {metrics.horizontalAdvance(text()) + 5, metrics.height()};
}

QSize SelectableText::minimumSizeHint() const {
    const QFontMetrics metrics(font());
    return {metrics.averageCharWidth() * 4, metrics.height()};
}

void SelectableText::changeEvent(QEvent *event) {
    QLineEdit::changeEvent(event);
    if (!restyling_ && event->type() == QEvent::ParentChange)
        restyle();
}

bool SelectableText::event(QEvent *event) {
    const bool handled = QLineEdit::event(event);
    if (!restyling_ &&
        (event->type() == QEvent::ApplicationPaletteChange || event->type() == QEvent::ApplicationFontChange))
        restyle();
    return handled;
}

} // namespace quorbit
