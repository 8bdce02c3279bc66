#include "ui/text/TextLabel.h"

#include "ui/look/ControlStyle.h"
#include "ui/look/Theme.h"
#include "ui/look/ToolTip.h"

#include <QEvent>
#include <QFontMetrics>
#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QTextLayout>

#include <algorithm>
#include <cmath>
#include <memory>

namespace quorbit {

namespace {

/// Line breaks and other control characters have no place in a single line.
QString singleLine(QString text) {
    for (QChar &c : text) {
        if (c.category() == QChar::Other_Control || c == QChar::LineSeparator ||
            c == QChar::ParagraphSeparator)
            c = u' ';
    }
    return text;
}

/// Lays a text out in lines of `width`. A word that is wider, such as an address, is broken where it must be,
/// which the metrics and the painter cannot do by themselves.
std::unique_ptr<QTextLayout> wrappedText(QString text, const QFont &font, int width,
                                         Qt::Alignment alignment) {
    text.replace(u'\n', QChar::LineSeparator);
    auto layout = std::make_unique<QTextLayout>(text, font);
    QTextOption option(alignment);
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout->setTextOption(option);
    layout->beginLayout();
    double y = 0;
    for (QTextLine line = layout->createLine(); line.isValid(); line = layout->createLine()) {
        line.setLineWidth(width);
        line.setPosition(QPointF(0, y));
        y += line.height();
    }
    layout->endLayout();
    return layout;
}

} // namespace

TextLabel::TextLabel(TextStyle style, TextColor color, QWidget *parent)
    : TextLabel(QString(), style, color, parent) {}

TextLabel::TextLabel(const QString &text, TextStyle style, TextColor color, QWidget *parent)
    : QWidget(parent), AccessibleControl(this), text_(text), style_(style), color_(color) {
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void TextLabel::setText(const QString &text) {
    if (text == text_)
        return;
    text_ = text;
    relayout();
    accessibleNameChanged();
}

void TextLabel::setHeading() {
    role_ = QAccessible::Heading;
}

void TextLabel::setColor(TextColor color) {
    if (color == color_)
        return;
    color_ = color;
    update();
}

void TextLabel::setOverflow(Overflow overflow) {
    if (overflow == overflow_)
        return;
    overflow_ = overflow;
    QSizePolicy policy(QSizePolicy::Preferred,
                       overflow == Overflow::wrap ? QSizePolicy::Minimum : QSizePolicy::Fixed);
    policy.setHeightForWidth(overflow == Overflow::wrap);
    setSizePolicy(policy);
    relayout();
}

void TextLabel::setAlignment(Qt::Alignment alignment) {
    if (alignment == alignment_)
        return;
    alignment_ = alignment;
    update();
}

void TextLabel::setMonospaced(bool monospaced) {
    if (monospaced == monospaced_)
        return;
    monospaced_ = monospaced;
    relayout();
}

QFont TextLabel::ownFont() const {
    return textFont(style_, font(), monospaced_);
}

Qt::Alignment TextLabel::visualAlignment() const {
    return QStyle::visualAlignment(layoutDirection(), alignment_);
}

void TextLabel::relayout() {
    heights_.clear();
    updateGeometry();
    update();
}

QSize TextLabel::sizeHint() const {
    const QFontMetrics metrics(ownFont());
    if (overflow_ != Overflow::wrap)
        return {textWidth(ownFont(), singleLine(text_)), metrics.height()};
    // A wrapping text has no width of its own: it takes what its layout gives, and this much if nothing else
    // decides.
    const int comfortable = metrics.averageCharWidth() * 60;
    return {std::min(textWidth(ownFont(), text_), comfortable), heightForWidth(comfortable)};
}

QSize TextLabel::minimumSizeHint() const {
    const QFontMetrics metrics(ownFont());
    const int least = metrics.horizontalAdvance(QChar(0x2026)) + metrics.averageCharWidth();
    return {std::min(least, textWidth(ownFont(), text_)), metrics.height()};
}

int TextLabel::heightForWidth(int width) const {
    const QFontMetrics metrics(ownFont());
    if (overflow_ != Overflow::wrap)
        return metrics.height();
    // A layout asks for the same few widths again and again; a window that is being resized for new ones.
    constexpr qsizetype mostWidths = 16;
    if (const auto known = heights_.constFind(width); known != heights_.constEnd())
        return *known;
    if (heights_.size() == mostWidths)
        heights_.clear();
    const auto lines = wrappedText(text_, ownFont(), width, visualAlignment());
    const int height =
        std::max(static_cast<int>(std::ceil(lines->boundingRect().height())), metrics.height());
    heights_.insert(width, height);
    return height;
}

void TextLabel::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    painter.setFont(ownFont());
    painter.setPen(textColor(palette(), color_));
    dimIfDisabled(painter, *this);
    if (overflow_ == Overflow::wrap) {
        const auto lines = wrappedText(text_, ownFont(), width(), visualAlignment());
        const double spare = std::max(height() - lines->boundingRect().height(), 0.0);
        lines->draw(&painter, QPointF(0, (alignment_ & Qt::AlignVCenter) ? std::floor(spare / 2) : 0));
        return;
    }
    const auto mode = overflow_ == Overflow::cutMiddle ? Qt::ElideMiddle : Qt::ElideRight;
    painter.drawText(rect(), static_cast<int>(visualAlignment()) | Qt::TextSingleLine,
                     painter.fontMetrics().elidedText(singleLine(text_), mode, width()));
}

void TextLabel::changeEvent(QEvent *event) {
    if (event->type() == QEvent::FontChange)
        relayout();
    QWidget::changeEvent(event);
}

bool TextLabel::event(QEvent *event) {
    // Text that was cut can be read whole by resting the pointer on it.
    if (event->type() == QEvent::ToolTip && overflow_ != Overflow::wrap && sizeHint().width() > width()) {
        showToolTip(*static_cast<QHelpEvent *>(event), singleLine(text_), this);
        return true;
    }
    return QWidget::event(event);
}

TextLabel *wrapping(TextLabel *label) {
    label->setOverflow(TextLabel::Overflow::wrap);
    return label;
}

} // namespace quorbit
