#pragma once

#include "ui/access/Accessibility.h"
#include "ui/access/KeyboardArea.h"

class QScrollArea;
class QVBoxLayout;

namespace quorbit {

class Button;

/// A panel over a window that must be answered before the window can be used again. It lies in the window
/// itself, so that it needs nothing of the window manager: it dims and blocks what is below, the shortcuts of
/// the window too, keeps the focus inside, and gives it back when it goes. Escape dismisses it, and Return
/// presses its default button.
class Overlay : public KeyboardArea, public AccessibleControl {
    Q_OBJECT

public:
    /// Whether an open overlay stands before the widget, which then is to answer nobody.
    static bool covers(const QWidget &widget);

    /// Shows the overlay and moves the focus into it.
    void open();
    /// Hides the overlay, emits dismissed() and lets the event loop delete it. Does nothing when repeated.
    void dismiss();
    /// The button that Return presses wherever the focus is, unless the focused control takes the key.
    void setDefaultButton(Button *button);

    bool isAccessibleLeaf() const override { return false; }
    void addAccessibleState(QAccessible::State &state) const override;

Q_SIGNALS:
    void dismissed();

protected:
    /// Covers the window of `over`.
    explicit Overlay(QWidget *over);

    QVBoxLayout *column() const { return column_; }
    /// The size of the panel at the default font size; a height of 0 follows the content. Where the window is
    /// too small for the content, it scrolls.
    void setPanelSize(QSize size);

    bool eventFilter(QObject *watched, QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    bool event(QEvent *event) override;

private:
    void place();

    QWidget *panel_;
    QScrollArea *scroller_;
    QVBoxLayout *column_;
    QSize panelSize_;
    QPointer<Button> defaultButton_;
    bool open_ = false;
};

} // namespace quorbit
