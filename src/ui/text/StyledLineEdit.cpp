#include "ui/text/StyledLineEdit.h"

#include "ui/look/Inherited.h"
#include "ui/look/Theme.h"

#include <QPainter>
#include <QStyle>

namespace quorbit {

namespace {
constexpr int lineEditMargin = 2; // that QLineEdit keeps at each side of its text
}

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

void StyledLineEdit::paintEvent(QPaintEvent *event) {
    // QLineEdit cuts a text that is too long without a sign; only with a cursor in it that is clear.
    const QRect room = (rect() - textMargins()).adjusted(lineEditMargin, 0, -lineEditMargin, 0) & rect();
    if (hasFocus() || hasSelectedText() || textWidth(font(), displayText()) <= room.width())
        return QLineEdit::paintEvent(event);
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::Text));
    const Qt::Alignment side = QStyle::visualAlignment(layoutDirection(), alignment() | Qt::AlignVCenter);
    painter.drawText(room, static_cast<int>(side) | Qt::TextSingleLine,
                     painter.fontMetrics().elidedText(displayText(), Qt::ElideRight, room.width()));
}

} // namespace quorbit
