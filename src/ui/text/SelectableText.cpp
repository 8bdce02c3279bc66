#include "ui/text/SelectableText.h"

#include <QFontMetrics>

namespace quorbit {

namespace {
// QLineEdit keeps two pixels at each side of its text; here it starts and ends where a label does.
constexpr int lineEditMargin = 2;
constexpr int cursorWidth = 1;
} // namespace

SelectableText::SelectableText(TextStyle style, TextColor color, bool monospaced, QWidget *parent)
    : StyledLineEdit(style, color, monospaced, parent) {
    setReadOnly(true);
    setTextMargins(-lineEditMargin, 0, -lineEditMargin - cursorWidth, 0);
}

QSize SelectableText::sizeHint() const {
    const QFontMetrics metrics(font());
    return {textWidth(font(), text()) + cursorWidth, metrics.height()};
}

QSize SelectableText::minimumSizeHint() const {
    const QFontMetrics metrics(font());
    return {metrics.averageCharWidth() * 4, metrics.height()};
}

} // namespace quorbit
