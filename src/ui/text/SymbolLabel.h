#pragma once

#include "ui/access/Accessibility.h"
#include "ui/look/TextColor.h"

#include <QWidget>

namespace quorbit {

/// A symbol beside a text. It is an ornament that screen readers skip, until it is given an accessible name.
class SymbolLabel final : public QWidget, public AccessibleControl {
    Q_OBJECT

public:
    /// `size` is the side of the symbol's square at the default font size; it grows with the user's font.
    explicit SymbolLabel(const QString &name = {}, double size = 16, TextColor color = TextColor::secondary,
                         QWidget *parent = nullptr);

    void setSymbol(const QString &name);
    void setColor(TextColor color);
    /// The width that the symbol is centred in, when it is not the symbol's own; grows with the user's font.
    void setColumnWidth(double width);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }
    QAccessible::Role accessibleRole() const override { return QAccessible::Graphic; }
    void addAccessibleState(QAccessible::State &state) const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QString name_;
    double size_;
    double columnWidth_ = 0;
    TextColor color_;
};

} // namespace quorbit
