#pragma once

#include "ui/access/Accessibility.h"
#include "ui/look/TextColor.h"
#include "ui/look/TextStyle.h"

#include <QHash>
#include <QPointer>
#include <QWidget>

namespace quorbit {

/// Plain text, never markup, in one of the styles and colours.
class TextLabel final : public QWidget, public AccessibleControl {
    Q_OBJECT

public:
    /// What becomes of text that does not fit: cut with an ellipsis at its end or in its middle, or broken
    /// into as many lines as it needs. With `keep` the label is never narrower than its text.
    enum class Overflow { cutEnd, cutMiddle, wrap, keep };

    explicit TextLabel(TextStyle style = TextStyle::body, TextColor color = TextColor::primary,
                       QWidget *parent = nullptr);
    TextLabel(const QString &text, TextStyle style, TextColor color, QWidget *parent = nullptr);

    QString text() const { return text_; }
    void setText(const QString &text);
    void setColor(TextColor color);
    void setOverflow(Overflow overflow);
    /// Where the text lies in the label; leading and vertically centred unless told otherwise.
    void setAlignment(Qt::Alignment alignment);
    void setMonospaced(bool monospaced);
    /// Lets screen readers find the text as the heading of what follows.
    void setHeading();
    /// The control or group that carries the same text as its name.
    void setBuddy(QWidget *buddy) { buddy_ = buddy; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    bool hasHeightForWidth() const override { return overflow_ == Overflow::wrap; }
    int heightForWidth(int width) const override;

    QAccessible::Role accessibleRole() const override { return role_; }
    QString accessibleFallbackName() const override { return text_; }
    QWidget *accessibleLabelled() const override { return buddy_; }

protected:
    void paintEvent(QPaintEvent *event) override;
    void changeEvent(QEvent *event) override;
    bool event(QEvent *event) override;

private:
    QFont ownFont() const;
    Qt::Alignment visualAlignment() const;
    void relayout();

    QString text_;
    TextStyle style_;
    TextColor color_;
    Overflow overflow_ = Overflow::cutEnd;
    Qt::Alignment alignment_ = Qt::AlignLeading | Qt::AlignVCenter;
    bool monospaced_ = false;
    QAccessible::Role role_ = QAccessible::StaticText;
    QPointer<QWidget> buddy_;
    mutable QHash<int, int> heights_; ///< of the wrapped text by width, since laying it out takes long
};

/// Lets a label break its text into as many lines as it needs.
TextLabel *wrapping(TextLabel *label);

} // namespace quorbit
